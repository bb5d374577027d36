// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Ends the process by abort(), after one line on standard error: "velaFORGE: <operation>: <reason>".
[[noreturn, gnu::cold]] VFBASE_EXPORT void failRequirement(const char* operation,
                                                           const char* reason) noexcept;

/// Returns whether the calling thread constructed or runs the Application; true before there is one.
VFBASE_EXPORT bool isApplicationThread() noexcept;

/// Makes the calling thread the thread of isApplicationThread(). Application calls this.
VFBASE_EXPORT void adoptApplicationThread() noexcept;

} // namespace vfBase

/// Ends the process with one line if @p condition is false: for a call that breaks the contract and would
/// corrupt memory. Active in release builds too. @p operation names the class and the operation, @p reason
/// says what the caller did.
#define VF_REQUIRE(condition, operation, reason)                                                             \
    (static_cast<bool>(condition) ? static_cast<void>(0) : ::vfBase::failRequirement(operation, reason))

/// In debug builds, ends the process if an operation that belongs to the thread of Application::run is called
/// on another thread.
#ifdef NDEBUG
#define VF_REQUIRE_APPLICATION_THREAD(operation) static_cast<void>(0)
#else
#define VF_REQUIRE_APPLICATION_THREAD(operation)                                                             \
    VF_REQUIRE(::vfBase::isApplicationThread(), operation, "called on another thread than Application::run")
#endif
