// SPDX-License-Identifier: MIT
// The history against a plain model of it, over long random sequences of operations.
#include "support/Search.h"

#include "CommandFixtures.h"

#include <gtest/gtest.h>

#include <list>
#include <random>
#include <string>

using vfApplication::Command;
using vfApplication::CommandPrivate;
using vfApplication::CommandProcessor;

namespace {

class Step : public CommandPrivate
{
public:
    explicit Step(int number, bool undoable) : m_number(number), m_undoable(undoable) {}

    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return m_undoable; }
    bool Do(const vfBase::VfVariant&) override { return !s_fails; }
    bool undo(const vfBase::VfVariant&) override { return !s_fails; }
    int number() const { return m_number; }

    static bool s_fails;

private:
    int m_number;
    bool m_undoable;
};

bool Step::s_fails = false;

/// What the history is to be, told with the means of a list: two iterators, and flags for what is no iterator.
class Model
{
public:
    struct Entry
    {
        int number;
        bool undoable;
    };
    using List = std::list<Entry>;

    explicit Model(int maximum) : m_maximum(maximum), m_cursor(m_list.end()), m_saved(m_list.end()) {}

    void store(Entry entry)
    {
        if (m_cursor == m_list.end()) {
            m_list.clear();
            m_savedIsNone = true;
        } else {
            for (auto next = std::next(m_cursor); next != m_list.end();)
                next = erase(next);
        }
        if (m_maximum > 0 && static_cast<int>(m_list.size()) == m_maximum)
            erase(m_list.begin());
        m_list.push_back(entry);
        m_cursor = std::prev(m_list.end());
    }

    bool undo(bool fails)
    {
        if (!canUndo() || fails)
            return false;
        m_cursor = m_cursor == m_list.begin() ? m_list.end() : std::prev(m_cursor);
        return true;
    }

    bool redo(bool fails)
    {
        if (!canRedo() || fails)
            return false;
        m_cursor = m_cursor == m_list.end() ? m_list.begin() : std::next(m_cursor);
        return true;
    }

    bool canUndo() const { return m_cursor != m_list.end() && m_cursor->undoable; }
    bool canRedo() const
    {
        return m_cursor == m_list.end() ? !m_list.empty() : std::next(m_cursor) != m_list.end();
    }
    void mark()
    {
        m_saved = m_cursor;
        m_savedIsNone = false;
    }
    void initialize() { m_cursor = m_list.end(); }
    void clear()
    {
        m_list.clear();
        m_savedIsNone = true;
        m_cursor = m_list.end();
    }
    bool isDirty() const
    {
        if (m_list.empty())
            return false;
        if (!m_savedIsNone && m_saved == m_list.end())
            return true;
        if (m_cursor == m_list.end())
            return true;
        return m_savedIsNone || m_cursor != m_saved;
    }
    int current() const { return m_cursor == m_list.end() ? -1 : m_cursor->number; }

private:
    List::iterator erase(List::iterator place)
    {
        if (!m_savedIsNone && m_saved == place)
            m_savedIsNone = true;
        return m_list.erase(place);
    }

    int m_maximum;
    List m_list;
    List::iterator m_cursor;
    List::iterator m_saved;
    bool m_savedIsNone = false;
};

int currentNumber(CommandProcessor& processor)
{
    const Command current = processor.getCurrentCommand();
    return current.isValid() ? dynamic_cast<Step&>(*current.getImp()).number() : -1;
}

void expectSameAsModel(int maximum, unsigned seed)
{
    std::mt19937 random(seed);
    CommandProcessor processor(maximum);
    Model model(maximum);
    int next = 0;
    for (int round = 0; round < 20000; ++round) {
        const unsigned choice = random() % 100;
        Step::s_fails = random() % 20 == 0;
        if (choice < 35) {
            const bool undoable = random() % 15 != 0;
            const int number = next++;
            const bool done = processor.submit(Command(new Step(number, undoable)), true);
            ASSERT_EQ(!Step::s_fails, done);
            if (done)
                model.store({number, undoable});
        } else if (choice < 65) {
            ASSERT_EQ(model.undo(Step::s_fails), processor.undo()) << "round " << round;
        } else if (choice < 90) {
            ASSERT_EQ(model.redo(Step::s_fails), processor.redo()) << "round " << round;
        } else if (choice < 97) {
            processor.markAsSaved();
            model.mark();
        } else if (choice < 99) {
            processor.initialize();
            model.initialize();
        } else {
            processor.clearCommands();
            processor.initialize();
            model.clear();
        }
        ASSERT_EQ(model.current(), currentNumber(processor)) << "round " << round;
        ASSERT_EQ(model.canUndo(), processor.canUndo()) << "round " << round;
        ASSERT_EQ(model.canRedo(), processor.canRedo()) << "round " << round;
        ASSERT_EQ(model.isDirty(), processor.isDirty()) << "round " << round;
    }
}

} // namespace

TEST(CommandProcessorRandomOperations, AgreeWithAPlainModelWithoutALimit)
{
    vfTest::Search search("sequences of commands", 5);
    while (search.next())
        expectSameAsModel(-1, search.seed());
}

TEST(CommandProcessorRandomOperations, AgreeWithAPlainModelWithSmallLimits)
{
    vfTest::Search search("sequences of commands", 4);
    while (search.next()) {
        const int maximums[] = {1, 2, 3, 7};
        expectSameAsModel(maximums[search.seed() % 4], search.seed());
    }
}
