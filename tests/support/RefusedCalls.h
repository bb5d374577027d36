// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include <sys/syscall.h>

namespace vfTest {

/// Runs @p work in a child process in which the system calls @p calls fail with the error @p error: file systems and
/// systems that lack something are seldom there when a test needs them.
/// @return whether all expectations in @p work were met
bool passesWhereRefused(const std::vector<long>& calls, int error, const std::function<void()>& work);

// The numbers of one function's system calls; not each processor has all of them.
inline const std::vector<long> linkCalls{
#ifdef SYS_link
    SYS_link,
#endif
    SYS_linkat};
inline const std::vector<long> renameCalls{
#ifdef SYS_rename
    SYS_rename, SYS_renameat,
#endif
    SYS_renameat2};
inline const std::vector<long> forkCalls{
#ifdef SYS_fork
    SYS_fork,
#endif
    SYS_clone, SYS_clone3};

} // namespace vfTest
