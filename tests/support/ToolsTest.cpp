// SPDX-License-Identifier: MIT
// The scripts that decide whether tests passed and whether they are tests.
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

#include <string>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using vfTest::Outcome;
using vfTest::runProgram;
using vfTest::TemporaryDirectory;

namespace {

const std::string tools = VELAFORGE_SOURCE_DIR "/tools/";

/// What ctest prints of a test that was run.
std::string test(int number, const std::string& name, const std::string& printed, const std::string& result)
{
    std::string text =
        "test " + std::to_string(number) + "\n    Start " + std::to_string(number) + ": " + name + "\n";
    for (std::size_t at = 0, end = 0; (end = printed.find('\n', at)) != std::string::npos; at = end + 1)
        text += std::to_string(number) + ": " + printed.substr(at, end + 1 - at);
    return text + "1/9 Test #" + std::to_string(number) + ": " + name + " ......" + result + "    0.10 sec\n";
}

Outcome summarise(const std::string& log)
{
    const TemporaryDirectory directory;
    return runProgram(
        {"sh", "-c",
         tools + "summarise_tests < " + directory.write("log", "Test project /somewhere\n" + log)});
}

/// A tree with one test file.
Outcome checkTests(const std::string& file,
                   const std::string& folder = "velaforge_test(t SOURCES ATest.cpp)\n")
{
    const TemporaryDirectory tree;
    tree.write("tests/CMakeLists.txt", "add_subdirectory(a)\n");
    tree.write("tests/a/CMakeLists.txt", folder);
    tree.write("tests/a/ATest.cpp", file);
    return runProgram({tools + "check_tests", tree.path()});
}

const std::string good = "TEST(A, Works)\n{\n    EXPECT_TRUE(true);\n}\n";

} // namespace

TEST(SummariseTests, CountsCasesAndNotPrograms)
{
    const Outcome outcome = summarise(
        test(1, "A", "case passed: A.One (1 ms)\ncase skipped: A.Two (1 ms)\ncase passed: A.Three (1 ms)\n",
             "   Passed") +
        test(2, "tools.check", "all well\n", "   Passed"));
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("3 passed, 0 failed, 1 skipped\n", outcome.out);
}

TEST(SummariseTests, AFailureShowsWhatItPrintedAndNamesTheCase)
{
    const Outcome outcome = summarise(
        test(1, "A", "case passed: A.One (1 ms)\none is not two\ncase FAILED: A.Two (1 ms)\n", "***Failed"));
    EXPECT_EQ(1, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("one is not two\n"));
    EXPECT_THAT(outcome.out, Not(HasSubstr("A.One")));
    EXPECT_THAT(outcome.out, EndsWith("failed: A.Two\n1 passed, 1 failed, 0 skipped\n"));
}

TEST(SummariseTests, AProgramThatFailsWithoutAFailedCaseCounts)
{
    for (const char* result : {"***Failed", "***Timeout", "***Exception: SegFault", "***Not Run"}) {
        const Outcome outcome = summarise(test(1, "A", "case passed: A.One (1 ms)\n", result));
        EXPECT_EQ(1, outcome.status) << result;
        EXPECT_THAT(outcome.out, EndsWith("failed: A\n1 passed, 1 failed, 0 skipped\n")) << result;
    }
}

TEST(SummariseTests, NoTestsAreAFailure)
{
    EXPECT_EQ(1, summarise("").status);
    EXPECT_EQ(1, summarise(test(1, "A", "case skipped: A.One (1 ms)\n", "   Passed")).status);
}

TEST(SummariseTests, AddsUpSeveralLogs)
{
    const TemporaryDirectory directory;
    const std::string log = directory.write(
        "log", test(1, "A", "case passed: A.One (1 ms)\ncase passed: A.Two (1 ms)\n", "   Passed"));
    const Outcome outcome = runProgram({tools + "summarise_tests", "--total", log, log});
    EXPECT_EQ("4 passed, 0 failed, 0 skipped\n", outcome.out);
}

TEST(CheckTests, AGoodTreePasses)
{
    const Outcome outcome = checkTests(good);
    EXPECT_EQ(0, outcome.status) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("1 files with 1 tests"));
}

TEST(CheckTests, AFileThatIsNotRegisteredIsTold)
{
    EXPECT_EQ(1, checkTests(good, "velaforge_test(t SOURCES OtherTest.cpp)\n").status);
}

TEST(CheckTests, ATestThatAssertsNothingIsTold)
{
    EXPECT_THAT(checkTests("TEST(A, Works)\n{\n    run();\n}\n").out, HasSubstr("Works asserts nothing"));
}

TEST(CheckTests, AComparisonWithTheTimeOfAClockIsTold)
{
    const std::string body = "    EXPECT_" // cut, or this file would compare, too
                             "LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));\n";
    EXPECT_THAT(checkTests("TEST(A, Works)\n{\n" + body + "}\n").out,
                HasSubstr("ATest.cpp:3: compares the time"));
}

TEST(CheckTests, ThreadsThatTheThreadSanitizerWouldNotSeeAreTold)
{
    const std::string file = "#include <thread>\nTEST(A, Works)\n{\n    std::" // as above
                             "thread([] {}).join();\n    EXPECT_TRUE(true);\n}\n";
    EXPECT_THAT(checkTests(file).out, HasSubstr("A uses threads"));
    EXPECT_EQ(0, checkTests(file, "velaforge_test(t SOURCES ATest.cpp THREADED A)\n").status);
}
