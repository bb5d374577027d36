// SPDX-License-Identifier: MIT
#include "support/Process.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

using testing::HasSubstr;
using testing::Not;
using vfTest::Outcome;

namespace {

constexpr const char* enough = "120"; // seconds, for a case that does nothing

Outcome runSample(std::vector<std::string> chosen, const std::string& seconds = enough)
{
    std::vector<std::string> arguments = {VELAFORGE_SAMPLE_PROGRAM, "--apart", seconds};
    arguments.insert(arguments.end(), chosen.begin(), chosen.end());
    return vfTest::runProgram(arguments);
}

std::string failureOf(const std::string& name, const std::string& seconds = enough)
{
    const Outcome outcome = runSample({name}, seconds);
    EXPECT_NE(0, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("case FAILED: " + name + " ("));
    EXPECT_THAT(outcome.out, Not(HasSubstr("case passed")));
    return outcome.out;
}

} // namespace

TEST(CasesApart, ACaseFindsNeitherTheVariablesNorTheHomeOfTheOneBefore)
{
    const Outcome outcome = runSample({"Sample.Passes", "Sample.PassesInAProcessOfItsOwn",
                                       "Sample.LeavesAFileAtHome", "Sample.FindsNoFileAtHome"});
    EXPECT_EQ(0, outcome.status) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("case passed: Sample.PassesInAProcessOfItsOwn ("));
    EXPECT_THAT(outcome.out, HasSubstr("case passed: Sample.FindsNoFileAtHome ("));
    EXPECT_THAT(outcome.out, Not(HasSubstr("chatter")));
}

TEST(CasesApart, ASuiteIsAllItsCases)
{
    const Outcome outcome = runSample({"Numbers/SampleOf"});
    EXPECT_EQ(0, outcome.status) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("case passed: Numbers/SampleOf.Passes/0 ("));
    EXPECT_THAT(outcome.out, HasSubstr("case passed: Numbers/SampleOf.Passes/1 ("));
}

TEST(CasesApart, AFailureShowsWhatTheCasePrinted)
{
    EXPECT_THAT(failureOf("Sample.Fails"), HasSubstr("because one is not two"));
}

TEST(CasesApart, OneFailureLetsTheOthersRunAndDecidesTheStatus)
{
    const Outcome outcome =
        runSample({"Sample.Fails", "Sample.FailsAfterItsEnd", "Numbers/SampleOf.Passes/1"});
    EXPECT_EQ(1, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("case passed: Numbers/SampleOf.Passes/1 ("));
}

TEST(CasesApart, ACrashFailsWithItsSignalAndTheLastWords)
{
    const std::string out = failureOf("Sample.Crashes");
    EXPECT_THAT(out, HasSubstr("last words\n"));
    EXPECT_THAT(out, testing::AnyOf(HasSubstr("killed by a signal: Segmentation fault"),
                                    HasSubstr("exit status"))); // a sanitizer exits
}

TEST(CasesApart, EndingTheProcessIsNotPassing)
{
    EXPECT_THAT(failureOf("Sample.EndsEarlyWithStatus0"), HasSubstr("ended before its end"));
}

TEST(CasesApart, WhatFailsAfterTheCaseFailsIt)
{
    EXPECT_THAT(failureOf("Sample.FailsAfterItsEnd"), HasSubstr("exit status 23"));
}

#ifdef __SANITIZE_ADDRESS__
TEST(CasesApart, ALeakFailsTheCaseThatLeaks)
{
    EXPECT_THAT(failureOf("Sample.Leaks"), HasSubstr("1000 byte(s) leaked"));
}
#endif

TEST(CasesApart, ASkippedCaseIsNeitherPassedNorFailed)
{
    const Outcome outcome = runSample({"Sample.Skips"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("for a reason"));
    EXPECT_THAT(outcome.out, HasSubstr("case skipped: Sample.Skips ("));
}

TEST(CasesApart, ACaseThatHangsIsEnded)
{
    EXPECT_THAT(failureOf("Sample.Hangs", "1"), HasSubstr("killed after 1 seconds"));
}

TEST(CasesApart, AProcessThatACaseLeavesBehindIsEnded)
{
    const vfTest::TemporaryDirectory directory;
    setenv("VELAFORGE_SAMPLE_FILE", directory.file("process").c_str(), 1);
    const Outcome outcome = runSample({"Sample.LeavesAProcessBehind"});
    EXPECT_EQ(0, outcome.status) << outcome.out;
    const std::string process = vfTest::readFile(directory.file("process"));
    ASSERT_NE("", process);
    // It was sent a signal, which the kernel delivers when the process runs next; the process that adopts it may take its
    // time to reap it.
    const auto isOver = [&process] {
        const std::string state = vfTest::readFile("/proc/" + process + "/stat");
        return testing::Matches(testing::AnyOf("", HasSubstr(") Z "), HasSubstr(") X ")))(state);
    };
    for (int tries = 0; tries < 6000 && !isOver(); ++tries)
        usleep(10000);
    EXPECT_TRUE(isOver());
}

TEST(CasesApart, AnUnknownNameFails)
{
    EXPECT_EQ(1, runSample({"Sample.IsNotThere"}).status);
}
