// SPDX-License-Identifier: MIT
#include "support/RefusedCalls.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdio>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfTest {

namespace {

/// Has the system calls fail in this process until its end.
bool refuse(const std::vector<long>& calls, int error)
{
    std::vector<sock_filter> program{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const long call : calls) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned int>(call), 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned int>(error)));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

} // namespace

bool passesWhereRefused(const std::vector<long>& calls, int error, const std::function<void()>& work)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        EXPECT_TRUE(refuse(calls, error)) << "the system has no filters for system calls";
        if (!testing::Test::HasFailure())
            work();
        std::fflush(stdout);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

} // namespace vfTest
