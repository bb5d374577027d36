// SPDX-License-Identifier: MIT
// Every hook of a program with a window times every action, each in a process of its own: a fork of one that
// shows its window already.
#include "WindowScenario.h"
#include "lifetimes/Cell.h"

#include <gmock/gmock.h>

#include <optional>

using vfLife::Action;
using vfLife::Cell;
using vfLife::Group;
using vfLife::Row;

namespace {

bool isSound(const std::string& outcome)
{
    return testing::Matches(testing::AnyOf("done", "refused", "-", "passes", "told", "caught"))(outcome);
}

class WindowLifetimeMatrix : public testing::TestWithParam<Group>
{
protected:
    /// Plays the cells of a row. @return the row as it stands in the documentation; nothing in the process of a
    /// cell
    std::optional<std::string> play(const Row& row)
    {
        std::string line = "| " + row.name() + " |";
        for (const auto& [action, heading] : vfLife::windowActions()) {
            const auto outcome = play(row, action, 1);
            if (!outcome)
                return std::nullopt;
            EXPECT_TRUE(isSound(*outcome)) << row.name() << ", " << heading << ": " << *outcome;
            line += " " + *outcome + " |";
        }
        // A later call meets what the calls before have left.
        for (const Action action : {Action::CloseThis, Action::Throw}) {
            const auto outcome = play(row, action, 2);
            if (!outcome)
                return std::nullopt;
            EXPECT_TRUE(isSound(*outcome) || *outcome == "not reached")
                << row.name() << ", later: " << *outcome;
        }
        return line;
    }

    /// The process of a cell, while it is played.
    std::optional<Cell> m_cell;

    /// The cell leaks, and nothing can be done about it.
    bool m_leaks = false;

private:
    std::optional<std::string> play(const Row& row, Action action, int nth)
    {
        m_cell.emplace();
        if (!m_cell->isChild())
            return m_cell->outcome();
        m_leaks = row.leaksWhenThrown && action == Action::Throw;
        vfLife::play(row, action, nth);
        return std::nullopt;
    }
};

} // namespace

TEST_P(WindowLifetimeMatrix, AHookMayDoWhatAProgramDoes)
{
    const vfTest::TemporaryDirectory directory;
    vfLife::runWindow(GetParam().mode, directory, [this] {
        for (const Row& row : GetParam().rows) {
            const std::optional<std::string> line = play(row);
            if (!line)
                return; // to the event loop, which ends
            EXPECT_EQ(vfLife::documentedRow(row.name()), *line);
        }
        vfLife::endProgram();
    });
    if (m_cell && m_cell->isChild())
        m_cell->tell(vfLife::verdict(), !m_leaks);
}

INSTANTIATE_TEST_SUITE_P(Hooks, WindowLifetimeMatrix, testing::ValuesIn(vfLife::groups()),
                         [](const auto& group) { return group.param.name; });
