// SPDX-License-Identifier: MIT
#include <velaforge/base/Require.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace vfBase {

namespace {

/// An address that differs from thread to thread; its value is never read.
const void* threadMark() noexcept
{
    static thread_local char mark;
    return &mark;
}

std::atomic<const void*> applicationThread{nullptr};

} // namespace

void failRequirement(const char* operation, const char* reason) noexcept
{
    std::fprintf(stderr, "velaFORGE: %s: %s\n", operation, reason);
    std::abort();
}

bool isApplicationThread() noexcept
{
    const void* owner = applicationThread.load(std::memory_order_relaxed);
    return !owner || owner == threadMark();
}

void adoptApplicationThread() noexcept
{
    applicationThread.store(threadMark(), std::memory_order_relaxed);
}

} // namespace vfBase
