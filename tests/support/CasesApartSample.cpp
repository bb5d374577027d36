// SPDX-License-Identifier: MIT
// Cases that end in every way in which a case can end; CasesApartTest runs this program and reads what it prints.
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include <unistd.h>

namespace {

bool wasHereBefore()
{
    static bool was = false;
    return std::exchange(was, true);
}

} // namespace

TEST(Sample, Passes)
{
    std::puts("chatter of a case that passes");
    EXPECT_FALSE(wasHereBefore());
}

TEST(Sample, PassesInAProcessOfItsOwn)
{
    EXPECT_FALSE(wasHereBefore());
}

TEST(Sample, LeavesAFileAtHome)
{
    vfTest::overwriteFile(getenv("HOME") + std::string("/left"), "");
    EXPECT_TRUE(std::filesystem::exists(getenv("HOME") + std::string("/left")));
}

TEST(Sample, FindsNoFileAtHome)
{
    EXPECT_FALSE(std::filesystem::exists(getenv("HOME") + std::string("/left")));
}

TEST(Sample, Fails)
{
    EXPECT_EQ(1, 2) << "because one is not two";
}

TEST(Sample, Crashes)
{
    std::puts("last words");
    std::fflush(stdout);
    raise(SIGSEGV);
}

TEST(Sample, EndsEarlyWithStatus0)
{
    _exit(0);
}

TEST(Sample, FailsAfterItsEnd)
{
    std::atexit([] { _exit(23); });
}

TEST(Sample, Leaks)
{
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    static volatile auto address = ~reinterpret_cast<std::uintptr_t>(new char[1000]); // points to nothing
    EXPECT_NE(0u, address);
}

TEST(Sample, Skips)
{
    GTEST_SKIP() << "for a reason";
}

TEST(Sample, Hangs)
{
    for (;;)
        pause();
}

TEST(Sample, LeavesAProcessBehind)
{
    const pid_t process = fork();
    if (process == 0) {
        for (;;)
            pause();
    }
    std::printf("left process %d\n", static_cast<int>(process));
    vfTest::overwriteFile(getenv("VELAFORGE_SAMPLE_FILE"), std::to_string(process));
    EXPECT_GT(process, 0);
}

class SampleOf : public testing::TestWithParam<int>
{};

TEST_P(SampleOf, Passes)
{
    EXPECT_GT(GetParam(), 0);
}

INSTANTIATE_TEST_SUITE_P(Numbers, SampleOf, testing::Values(1, 2));
