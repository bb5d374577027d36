// SPDX-License-Identifier: MIT
#include "fuzz/FuzzTargets.h"
#include "support/Models.h"
#include "support/Spoiler.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

class FuzzTargets : public testing::TestWithParam<vfTest::FuzzTarget>
{
protected:
    static void run(const std::string& bytes)
    {
        GetParam().run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
};

} // namespace

TEST_P(FuzzTargets, TakeWhatWasFoundBeforeWithoutAFault)
{
    std::size_t files = 0;
    const fs::path corpus = fs::path(VELAFORGE_SOURCE_DIR) / "tests/fuzz/corpus" / GetParam().name;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        run(vfTest::readFile(entry.path().string()));
        ++files;
    }
    EXPECT_GT(files, 0u);
}

TEST_P(FuzzTargets, TakeTheirSeedsWholeAndSpoilt)
{
    ASSERT_FALSE(GetParam().seeds().empty());
    for (const std::string& seed : GetParam().seeds()) {
        run(seed);
        for (unsigned int number = 1; number <= 50; ++number)
            run(vfTest::Spoiler(seed, number).spoil());
    }
    run("");
}

TEST_P(FuzzTargets, ChangeTheirSeedsInTheirOwnWayWithoutLeavingThem)
{
    if (!GetParam().mutate)
        return;
    for (const std::string& seed : GetParam().seeds()) {
        std::size_t changed = 0;
        for (unsigned int number = 1; number <= 50; ++number) {
            std::string bytes = seed;
            auto* at = reinterpret_cast<std::uint8_t*>(bytes.data());
            EXPECT_EQ(seed.size(), GetParam().mutate(at, bytes.size(), number));
            changed += bytes != seed;
            run(bytes);
        }
        EXPECT_GT(changed, 40u);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FuzzTargets, testing::ValuesIn(vfTest::fuzzTargets()), [](const auto& info) {
    std::string name = info.param.name;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    return name;
});
