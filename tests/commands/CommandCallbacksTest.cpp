// SPDX-License-Identifier: MIT
// What commands may do to the history that runs, undoes or releases them.
#include "CommandFixtures.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>

using testing::ElementsAre;
using vfApplication::Command;
using vfApplication::CommandProcessor;
using vfTest::recorder;
using vfTest::RecordingCommand;

namespace {

/// A command that does what a test tells it when it is done, undone or destroyed.
struct Acting : RecordingCommand
{
    using RecordingCommand::RecordingCommand;

    bool Do(const vfBase::VfVariant& argument) override
    {
        RecordingCommand::Do(argument);
        if (inDo)
            inDo();
        return true;
    }
    bool undo(const vfBase::VfVariant& argument) override
    {
        RecordingCommand::undo(argument);
        if (inUndo)
            inUndo();
        return true;
    }

    std::function<void()> inDo;
    std::function<void()> inUndo;
    std::function<void()> atEnd;

protected:
    ~Acting() override
    {
        if (atEnd)
            atEnd();
    }
};

Command command(const char* name)
{
    return Command(new RecordingCommand(name));
}

} // namespace

TEST(CommandCallbacks, ACommandMayDeleteTheHistoryThatRunsIt)
{
    auto* processor = new CommandProcessor;
    auto* acting = new Acting("last");
    acting->inDo = [processor] { delete processor; };
    EXPECT_TRUE(processor->submit(Command(acting), true));
}

TEST(CommandCallbacks, ACommandMayDeleteTheHistoryThatUndoesOrRedoesIt)
{
    for (const bool isUndo : {true, false}) {
        auto* processor = new CommandProcessor;
        auto* acting = new Acting("last");
        processor->submit(Command(acting), true);
        if (isUndo)
            acting->inUndo = [processor] { delete processor; };
        else
            acting->inDo = [processor] { delete processor; };
        EXPECT_TRUE(isUndo ? processor->undo() : processor->undo() && processor->redo());
    }
}

TEST(CommandCallbacks, TheHistoryMayBeAskedWhileItReleasesItsCommands)
{
    CommandProcessor processor;
    int asked = 0;
    for (int i = 0; i < 3; ++i) {
        auto* acting = new Acting("asking");
        acting->atEnd = [&processor, &asked] {
            ++asked;
            processor.canUndo();
            processor.canRedo();
            processor.isDirty();
            processor.getCurrentCommand();
        };
        processor.submit(Command(acting), true);
    }
    processor.clearCommands();
    EXPECT_EQ(3, asked);
}

TEST(CommandCallbacks, TheHistoryMayBeAskedWhileItReleasesTheOldestCommand)
{
    CommandProcessor processor(1);
    auto* acting = new Acting("first");
    bool canUndo = true;
    acting->atEnd = [&] { canUndo = processor.canUndo(); };
    processor.submit(Command(acting), true);
    processor.submit(command("second"), true);
    EXPECT_FALSE(canUndo);
    EXPECT_TRUE(processor.canUndo());
}

TEST(CommandCallbacks, ACommandOfTheRedoTailMayStoreAnotherOneWhenItIsReleased)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    for (int i = 0; i < 3; ++i) {
        auto* acting = new Acting("tail");
        if (i == 1)
            acting->atEnd = [&processor] { processor.store(command("stored at the end of the tail")); };
        processor.submit(Command(acting), true);
    }
    for (int i = 0; i < 3; ++i)
        processor.undo();
    processor.submit(command("last"), true);
    EXPECT_STREQ("last", processor.getCurrentCommand().getName());
    EXPECT_FALSE(processor.canRedo());
    EXPECT_TRUE(processor.undo());
    EXPECT_STREQ("stored at the end of the tail", processor.getCurrentCommand().getName());
}

TEST(CommandCallbacks, ACommandIsNotUndoneOnceMoreWhileItIsUndone)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    auto* acting = new Acting("second");
    bool answer = true;
    acting->inUndo = [&] { answer = processor.undo(); };
    processor.submit(Command(acting), true);
    EXPECT_TRUE(processor.undo());
    EXPECT_FALSE(answer);
    EXPECT_STREQ("first", processor.getCurrentCommand().getName());
    acting->inUndo = nullptr;
    acting->inDo = [&] { answer = processor.redo(); };
    EXPECT_TRUE(processor.redo());
    EXPECT_FALSE(answer);
}

TEST(CommandCallbacks, WhatACommandSubmitsWhileItIsUndoneStaysTheCurrentOne)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    auto* acting = new Acting("second");
    acting->inUndo = [&] { processor.submit(command("third"), true); };
    processor.submit(Command(acting), true);
    EXPECT_TRUE(processor.undo());
    EXPECT_STREQ("third", processor.getCurrentCommand().getName());
}

TEST(CommandCallbacks, ACommandMayClearTheHistoryThatRunsItAndIsStoredAllTheSame)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    auto* acting = new Acting("second");
    acting->inDo = [&] { processor.clearCommands(); };
    EXPECT_TRUE(processor.submit(Command(acting), true));
    EXPECT_STREQ("second", processor.getCurrentCommand().getName());
    EXPECT_TRUE(processor.undo());
    EXPECT_FALSE(processor.canUndo());
}

TEST(CommandCallbacks, AHistoryThatWasClearedFromOutsideCountsAsEmpty)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    processor.clearCommands();
    EXPECT_FALSE(processor.canUndo());
    EXPECT_FALSE(processor.canRedo());
    EXPECT_FALSE(processor.undo());
    EXPECT_FALSE(processor.redo());
    EXPECT_FALSE(processor.getCurrentCommand().isValid());
    EXPECT_TRUE(processor.submit(command("second"), true));
    EXPECT_TRUE(processor.canUndo());
}

TEST(CommandCallbacks, ALongRedoTailIsReleasedBehindItsFirstOldestFirst)
{
    CommandProcessor processor;
    processor.submit(command("first"), true);
    constexpr int count = 10000; // more than are released at once
    for (int i = 0; i < count; ++i)
        processor.submit(command(std::to_string(i).c_str()), true);
    for (int i = 0; i < count; ++i)
        processor.undo();
    recorder().take();
    processor.store(command("last"));
    const vfTest::Lines lines = recorder().take();
    ASSERT_EQ(static_cast<std::size_t>(count), lines.size());
    for (int i = 1; i < count; ++i)
        ASSERT_EQ("~" + std::to_string(i), lines[static_cast<std::size_t>(i - 1)]);
    EXPECT_EQ("~0", lines.back());
    EXPECT_FALSE(processor.canRedo());
}

TEST(CommandCallbacks, TheSavedMarkOnACommandOfALongTailIsLost)
{
    for (const int marked : {1, 4000, 6000, 9999}) {
        CommandProcessor processor;
        processor.submit(command("first"), true);
        for (int i = 0; i < 9999; ++i) {
            processor.submit(command("tail"), true);
            if (i + 1 == marked)
                processor.markAsSaved();
        }
        for (int i = 0; i < 9999; ++i)
            processor.undo();
        processor.submit(command("last"), true);
        for (int i = 0; i < 9999; ++i)
            processor.submit(command("more"), true);
        do
            EXPECT_TRUE(processor.isDirty()) << marked;
        while (processor.undo() && !testing::Test::HasFailure());
    }
}

TEST(CommandCallbacks, CopiesMayAllBeDestroyed)
{
    {
        CommandProcessor first;
        first.submit(command("shared"), true);
        recorder().take();
        const CommandProcessor second(first);
        CommandProcessor third(4);
        third = second;
    }
    EXPECT_THAT(recorder().take(), ElementsAre("~shared"));
}

TEST(CommandCallbacks, SubmittingACommandWithoutABodyEndsTheProcessWithALine)
{
    EXPECT_DEATH(
        CommandProcessor().submit(Command(static_cast<vfApplication::CommandPrivate*>(nullptr)), true),
        "^velaFORGE: CommandProcessor::submit: the command has no body\n$");
    EXPECT_DEATH(Command(static_cast<vfApplication::CommandPrivate*>(nullptr)).Do(),
                 "^velaFORGE: Command::Do: the handle has no body\n$");
}
