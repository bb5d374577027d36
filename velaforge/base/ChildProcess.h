// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <functional>

namespace vfBase {

/// The result of tryInChild().
enum class ChildResult
{
    NotMade,   ///< the system did not create the process; the work did not start
    Succeeded, ///< the work returned true
    Failed,    ///< the work returned false, threw, or called std::terminate
    Died       ///< the process crashed, ended itself, or was killed at the time limit
};

/// Calls @p work in a copy of this process and waits for the result: for work that may crash or hang.
///
///     if (vfBase::tryInChild([&] { return reader.read(path); }, 60) == vfBase::ChildResult::Succeeded)
///         ...
///
/// The work cannot change the memory of this process. Its standard streams lead to /dev/null, and a crash
/// leaves no core file. If this process has other threads, the work must not wait for locks that they may
/// hold.
///
/// The child process is the leader of a process group of its own. This process watches the time and kills
/// that group with SIGKILL at the limit, so nothing that the work does to its signals or timers prolongs it.
/// The child process is killed too when this process ends. Processes that the work started and that stayed in
/// the group are killed when it ends, except where this process ignores SIGCHLD. Neither the handling of
/// SIGCHLD nor other child processes of this process are touched; no process and no descriptor is left
/// behind.
/// @param work     the work; it returns true for success
/// @param seconds  the time limit in seconds; 0 counts as 1
VFBASE_EXPORT ChildResult tryInChild(const std::function<bool()>& work, unsigned int seconds);

} // namespace vfBase
