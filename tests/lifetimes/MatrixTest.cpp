// SPDX-License-Identifier: MIT
// Every hook times every action, each in a process of its own.
#include "Cell.h"
#include "Scenario.h"

#include <gmock/gmock.h>

#include <string>

using vfLife::Cell;

namespace {

/// @return what came of the cell, or how its process ended
std::string outcomeOf(const std::string& hook, vfLife::Action action, int nth)
{
    Cell cell;
    if (cell.isChild())
        cell.tell(vfLife::play(hook, action, nth));
    return cell.outcome();
}

bool isSound(const std::string& outcome)
{
    return testing::Matches(testing::AnyOf("done", "refused", "-", "passes", "wrapped", "caught"))(outcome);
}

class LifetimeMatrix : public testing::TestWithParam<std::string>
{};

} // namespace

TEST_P(LifetimeMatrix, AHookMayDoWhatAProgramDoes)
{
    const std::string& hook = GetParam();
    std::string row = "| `" + hook + "` |";
    for (const auto& [action, heading] : vfLife::actions()) {
        const std::string outcome = outcomeOf(hook, action, 1);
        EXPECT_TRUE(isSound(outcome)) << hook << ", " << heading << ": " << outcome;
        row += " " + outcome + " |";
    }
    EXPECT_EQ(vfLife::documentedRow("`" + hook + "`"), row);
}

TEST_P(LifetimeMatrix, ALaterCallOfAHookMayDoSoAsWell)
{
    const std::string& hook = GetParam();
    for (const auto& [action, heading] : vfLife::actions()) {
        const std::string outcome = outcomeOf(hook, action, 2);
        EXPECT_TRUE(isSound(outcome) || outcome == "not reached")
            << hook << ", " << heading << ": " << outcome;
    }
}

INSTANTIATE_TEST_SUITE_P(Hooks, LifetimeMatrix, testing::ValuesIn(vfLife::hooks()),
                         [](const auto& hook) { return vfLife::testName(hook.param); });
