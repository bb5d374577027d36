// SPDX-License-Identifier: MIT
#include "support/RefusedCalls.h"

#include <velaforge/base/ChildProcess.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using vfBase::ChildResult;
using vfBase::tryInChild;

namespace {

bool hang()
{
    for (;;)
        pause();
}

} // namespace

TEST(ChildProcess, TellsWhatTheWorkReturned)
{
    EXPECT_EQ(ChildResult::Succeeded, tryInChild([] { return true; }, 60));
    EXPECT_EQ(ChildResult::Failed, tryInChild([] { return false; }, 60));
}

TEST(ChildProcess, WhatIsThrownIsAFailure)
{
    EXPECT_EQ(ChildResult::Failed, tryInChild([]() -> bool { throw std::runtime_error("no"); }, 60));
    const auto terminate = []() -> bool { std::terminate(); };
    EXPECT_EQ(ChildResult::Failed, tryInChild(terminate, 60));
}

TEST(ChildProcess, OneThatCrashesOrEndsItselfDied)
{
    EXPECT_EQ(ChildResult::Died, tryInChild([]() -> bool { std::abort(); }, 60));
    EXPECT_EQ(ChildResult::Died, tryInChild([]() -> bool { _exit(0); }, 60));
}

TEST(ChildProcess, WhatTheProgramDoesAboutItsOwnCrashesIsNotDoneAboutTheWorks)
{
    static int ends[2];
    ASSERT_EQ(0, pipe2(ends, O_CLOEXEC | O_NONBLOCK));
    for (const int number : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL}) {
        std::signal(number, [](int) { (void)!write(ends[1], "x", 1); });
        EXPECT_EQ(ChildResult::Died, tryInChild([number] { return std::raise(number) != 0; }, 60)) << number;
        char byte = 0;
        EXPECT_EQ(-1, read(ends[0], &byte, 1)) << number;
        EXPECT_EQ(EAGAIN, errno);
        std::signal(number, SIG_DFL);
    }
    close(ends[0]);
    close(ends[1]);
}

TEST(ChildProcess, OneThatDoesNotComeToAnEndIsEnded)
{
    EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
    EXPECT_EQ(ChildResult::Died, tryInChild(hang, 0));
}

TEST(ChildProcess, WorkThatProtectsItselfAgainstTheLimitIsEnded)
{
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, nullptr); // of the program, as one that waits for signals has it
    EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
    const auto stop = [] { return raise(SIGSTOP) == 0 && hang(); };
    EXPECT_EQ(ChildResult::Died, tryInChild(stop, 1));
    const auto ignore = [] {
        for (int number = 1; number < NSIG; ++number)
            signal(number, SIG_IGN);
        return hang();
    };
    EXPECT_EQ(ChildResult::Died, tryInChild(ignore, 1));
}

TEST(ChildProcess, TheResultIsRightWhateverTheProgramDoesWithItsChildren)
{
    struct sigaction noWait = {};
    noWait.sa_handler = [](int) {};
    noWait.sa_flags = SA_NOCLDWAIT;
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction collect = {};
    collect.sa_handler = [](int) {
        const int error = errno;
        while (waitpid(-1, nullptr, WNOHANG) > 0) {
        }
        errno = error;
    };
    for (const struct sigaction& action : {noWait, ignore, collect}) {
        sigaction(SIGCHLD, &action, nullptr);
        EXPECT_EQ(ChildResult::Succeeded, tryInChild([] { return true; }, 60));
        EXPECT_EQ(ChildResult::Failed, tryInChild([] { return false; }, 60));
        EXPECT_EQ(ChildResult::Died, tryInChild([]() -> bool { std::abort(); }, 60));
        EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
        EXPECT_EQ(-1, waitpid(-1, nullptr, 0));
        EXPECT_EQ(ECHILD, errno);
    }
}

TEST(ChildProcess, OtherChildrenOfTheProgramStayItsOwn)
{
    const pid_t ended = fork();
    if (ended == 0)
        _exit(7);
    const pid_t running = fork();
    if (running == 0)
        hang();
    siginfo_t info;
    ASSERT_EQ(0, waitid(P_PID, static_cast<id_t>(ended), &info, WEXITED | WNOWAIT));
    EXPECT_EQ(ChildResult::Succeeded, tryInChild([] { return true; }, 60));
    EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
    int status = 0;
    EXPECT_EQ(ended, waitpid(ended, &status, 0));
    EXPECT_EQ(7, WEXITSTATUS(status));
    EXPECT_EQ(0, waitpid(running, &status, WNOHANG));
    kill(running, SIGKILL);
    EXPECT_EQ(running, waitpid(running, &status, 0));
}

TEST(ChildProcess, LeavesNoProcessAndNoDescriptor)
{
    const auto countDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = countDescriptors();
    for (int i = 0; i < 10; ++i) {
        tryInChild([] { return true; }, 60);
        tryInChild([]() -> bool { std::abort(); }, 60);
    }
    tryInChild(hang, 1);
    EXPECT_EQ(before, countDescriptors());
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST(ChildProcess, ProcessesThatTheWorkStartsDoNotHoldItUpAndEndWithIt)
{
    int ends[2];
    ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
    const auto startAnother = [] {
        if (fork() == 0)
            hang();
    };
    const auto succeed = [&] {
        startAnother();
        return true;
    };
    const auto die = [&]() -> bool {
        startAnother();
        std::abort();
    };
    const auto hangBoth = [&] {
        startAnother();
        return hang();
    };
    // Longer than the test may take.
    EXPECT_EQ(ChildResult::Succeeded, tryInChild(succeed, 100000));
    EXPECT_EQ(ChildResult::Died, tryInChild(die, 100000));
    EXPECT_EQ(ChildResult::Died, tryInChild(hangBoth, 1));
    // The pipe ends when none of them holds it any more.
    close(ends[1]);
    char byte = 0;
    EXPECT_EQ(0, read(ends[0], &byte, 1));
    close(ends[0]);
}

TEST(ChildProcess, TheWorkEndsWithTheProgram)
{
    int ends[2];
    ASSERT_EQ(0, pipe2(ends, O_CLOEXEC));
    const pid_t program = fork();
    if (program == 0) {
        const auto work = [&] {
            (void)!write(ends[1], "x", 1);
            return hang();
        };
        tryInChild(work, 100000);
        _exit(0);
    }
    close(ends[1]);
    char byte = 0;
    EXPECT_EQ(1, read(ends[0], &byte, 1));
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    EXPECT_EQ(0, read(ends[0], &byte, 1));
    close(ends[0]);
}

TEST(ChildProcess, WorksWithClosedStandardStreamsAndLeavesThemClosed)
{
    const pid_t program = fork();
    if (program == 0) {
        for (int stream = 0; stream < 3; ++stream)
            close(stream);
        const auto hasStreams = [] {
            char byte = 0;
            return read(0, &byte, 1) == 0 && write(1, "x", 1) == 1 && write(2, "x", 1) == 1;
        };
        const bool isRight = tryInChild(hasStreams, 60) == ChildResult::Succeeded &&
                             tryInChild([] { return false; }, 60) == ChildResult::Failed &&
                             fcntl(0, F_GETFD) < 0 && fcntl(1, F_GETFD) < 0 && fcntl(2, F_GETFD) < 0;
        _exit(isRight ? 0 : 1);
    }
    int status = -1;
    waitpid(program, &status, 0);
    EXPECT_EQ(0, status);
}

TEST(ChildProcess, SeveralThreadsMayTryAtOnce)
{
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&right, i] {
            const ChildResult expected = i % 2 ? ChildResult::Succeeded : ChildResult::Failed;
            for (int tries = 0; tries < 10; ++tries)
                right += tryInChild([i] { return i % 2 == 1; }, 60) == expected;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(80, right);
}

TEST(ChildProcess, NothingOfTheWorkIsSeenHere)
{
    int value = 1;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const auto work = [&value] {
        value = 2;
        std::cout << "out" << std::endl;
        std::cerr << "err" << std::endl;
        return std::cin.get() == EOF;
    };
    EXPECT_EQ(ChildResult::Succeeded, tryInChild(work, 60));
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ(1, value);
}

TEST(ChildProcess, WithoutAProcessOrAChannelNothingIsTried)
{
    const auto refused = [](const std::vector<long>& calls, int error) {
        return vfTest::passesWhereRefused(calls, error, [] {
            bool isTried = false;
            EXPECT_EQ(ChildResult::NotMade, tryInChild([&] { return isTried = true; }, 60));
            EXPECT_FALSE(isTried);
        });
    };
    EXPECT_TRUE(refused(vfTest::forkCalls, EAGAIN));
    EXPECT_TRUE(refused({SYS_socketpair}, EMFILE));
}

TEST(ChildProcess, TellsHowItEndedWhereNoDescriptorStandsForAProcess)
{
    EXPECT_TRUE(vfTest::passesWhereRefused({SYS_pidfd_open}, ENOSYS, [] {
        EXPECT_EQ(ChildResult::Succeeded, tryInChild([] { return true; }, 3600));
        EXPECT_EQ(ChildResult::Failed, tryInChild([] { return false; }, 3600));
        EXPECT_EQ(ChildResult::Died, tryInChild([]() -> bool { std::abort(); }, 3600));
        EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
    }));
}
