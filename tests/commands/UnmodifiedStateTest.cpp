// SPDX-License-Identifier: MIT
// When undo and redo lead back to what was read or saved.
#include "CommandFixtures.h"

#include <velaforge/commands/CommandProcessor.h>

#include <gtest/gtest.h>

#include <functional>

using vfApplication::Command;
using vfApplication::CommandProcessor;
using vfBase::VfVariant;

namespace {

/// A command that changes a document, and tells the history so as Document::modify() does.
class Change : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    explicit Change(CommandProcessor& history, bool succeeds = true)
        : m_history(history), m_succeeds(succeeds)
    {}

    bool canUndo() const override { return true; }
    bool Do(const VfVariant&) override
    {
        m_history.noteModified(true);
        if (onDo)
            onDo();
        return m_succeeds;
    }
    bool undo(const VfVariant&) override
    {
        m_history.noteModified(true);
        return m_succeeds;
    }

    std::function<void()> onDo;

private:
    CommandProcessor& m_history;
    bool m_succeeds;
};

Command change(CommandProcessor& history)
{
    return Command(new Change(history));
}

} // namespace

TEST(UnmodifiedState, IsReachedAgainByUndoingAllAndByRedoing)
{
    CommandProcessor history;
    EXPECT_TRUE(history.isAtUnmodifiedState());
    history.submit(change(history), true);
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.submit(change(history), true);
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_TRUE(history.isAtUnmodifiedState());
    history.redo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, IsWhereItWasSaved)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.noteModified(false);
    EXPECT_TRUE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.redo();
    EXPECT_TRUE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, IsGoneWithTheRedoTailInWhichItWas)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.submit(change(history), true);
    history.noteModified(false);
    history.undo();
    history.submit(change(history), true); // in place of the second
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, OutlivesAnotherWayFromTheSameState)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.noteModified(false);
    history.submit(change(history), true);
    history.undo();
    history.submit(change(history), true);
    history.undo();
    EXPECT_TRUE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, IsGoneWithTheOldestCommand)
{
    CommandProcessor history(2);
    for (int i = 0; i < 3; ++i)
        history.submit(change(history), true);
    history.undo();
    history.undo();
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.isAtUnmodifiedState()); // the first command cannot be undone any more
}

TEST(UnmodifiedState, StaysWhileTheHistoryIsCleared)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.clearCommands();
    history.initialize();
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.noteModified(false);
    history.submit(change(history), true);
    history.noteModified(false);
    history.submit(change(history), true);
    history.undo();
    history.clearCommands();
    history.initialize();
    EXPECT_TRUE(history.isAtUnmodifiedState());
    history.submit(change(history), true);
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_TRUE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, AChangeThatNoStoredCommandMakesStays)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.noteModified(true); // by something else
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.noteModified(false);
    history.submit(change(history), false); // run, but not stored
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, ACommandThatFailedMayHaveChangedSomething)
{
    CommandProcessor history;
    EXPECT_FALSE(history.submit(Command(new Change(history, false)), true));
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, ACommandThatThrewMayHaveChangedSomething)
{
    CommandProcessor history;
    auto* thrower = new Change(history);
    thrower->onDo = [] { throw 1; };
    EXPECT_THROW(history.submit(Command(thrower), true), int);
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, ACommandOfOthersBelongsToTheHistoryAsAWhole)
{
    CommandProcessor history;
    auto* macro = new Change(history);
    macro->onDo = [&] { history.submit(change(history), false); };
    history.submit(Command(macro), true);
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_TRUE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, IsNotReachedWhileACommandRuns)
{
    CommandProcessor history;
    auto* curious = new Change(history);
    bool isAtState = true;
    curious->onDo = [&] { isAtState = history.isAtUnmodifiedState(); };
    history.submit(Command(curious), true);
    EXPECT_FALSE(isAtState);
}

TEST(UnmodifiedState, ACommandThatSavesWhileItRunsLeadsNowhereKnown)
{
    CommandProcessor history;
    auto* saver = new Change(history);
    saver->onDo = [&] { history.noteModified(false); };
    history.submit(Command(saver), true);
    EXPECT_FALSE(history.isAtUnmodifiedState());
    history.undo();
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, CommandsThatOnlyCountAsUndoneHaveChangedTheDocument)
{
    CommandProcessor history;
    history.submit(change(history), true);
    history.initialize();
    EXPECT_FALSE(history.isAtUnmodifiedState());
}

TEST(UnmodifiedState, AHistoryThatStoresNothingDoesNotRevertAnything)
{
    struct Forgetful : CommandProcessor
    {
        void store(Command) override {}
    };
    Forgetful history;
    history.submit(change(history), true);
    EXPECT_FALSE(history.isAtUnmodifiedState());
}
