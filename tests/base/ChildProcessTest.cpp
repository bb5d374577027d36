// SPDX-License-Identifier: MIT
#include <velaforge/base/ChildProcess.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

#include <unistd.h>

using vfBase::ChildResult;
using vfBase::tryInChild;

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

TEST(ChildProcess, OneThatDoesNotComeToAnEndIsEnded)
{
    const auto hang = []() -> bool {
        for (;;)
            pause();
    };
    EXPECT_EQ(ChildResult::Died, tryInChild(hang, 1));
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
