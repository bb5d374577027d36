// SPDX-License-Identifier: MIT
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

TEST(Examples, HelloShowsTheFirstLineOfEachFile)
{
    const vfTest::TemporaryDirectory directory;
    const std::string first = directory.write("a.txt", "good morning\nsecond\n");
    const std::string second = directory.write("b.txt", "good night");
    const vfTest::Outcome outcome =
        vfTest::runProgram({VELAFORGE_PROGRAM_DIR "/example_01_hello", first, second});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("good morning\n"));
    EXPECT_THAT(outcome.out, HasSubstr("good night\n"));
}
