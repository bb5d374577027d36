// SPDX-License-Identifier: MIT
#include "CommandFixtures.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Registry_.h>

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::Command;
using vfApplication::CommandProcessor;
using vfTest::recorder;
using vfTest::RecordingCommand;
using vfTest::RecordingProcessor;
using vfTest::slotOf;

namespace {

Command named(const char* name)
{
    return Command(new RecordingCommand(name));
}

std::string currentName(CommandProcessor& processor)
{
    Command current = processor.getCurrentCommand();
    return current.isValid() ? current.getName() : "none";
}

} // namespace

TEST(CommandProcessor, IsCleanAndHasNothingToUndoOrRedoWhenNew)
{
    RecordingProcessor processor;
    EXPECT_FALSE(processor.isDirty());
    EXPECT_FALSE(processor.canUndo());
    EXPECT_FALSE(processor.canRedo());
    EXPECT_FALSE(processor.getCurrentCommand().isValid());
    EXPECT_FALSE(processor.undo());
    EXPECT_FALSE(processor.redo());
    EXPECT_THAT(recorder().lines(), IsEmpty());
    EXPECT_EQ(-1, processor.getMaxCommands());
}

TEST(CommandProcessor, SubmitRunsThenStores)
{
    RecordingProcessor processor;
    EXPECT_TRUE(processor.submit(named("a"), true));
    EXPECT_THAT(recorder().take(),
                ElementsAre("doCommand", "do a", "store", "clearCommands", "setMenuStrings"));
    EXPECT_TRUE(processor.submit(named("b"), true));
    EXPECT_THAT(recorder().take(), ElementsAre("doCommand", "do b", "store", "setMenuStrings"));
    EXPECT_EQ("b", currentName(processor));
}

TEST(CommandProcessor, SubmitOfACommandThatFailsChangesNothing)
{
    RecordingProcessor processor;
    processor.submit(named("a"), true);
    processor.markAsSaved();
    recorder().take();
    auto* failing = new RecordingCommand("b");
    failing->doResult = false;
    EXPECT_FALSE(processor.submit(Command(failing), true));
    EXPECT_THAT(recorder().take(), ElementsAre("doCommand", "do b", "~b"));
    EXPECT_EQ("a", currentName(processor));
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, SubmitStoresACommandThatCannotUndo)
{
    CommandProcessor processor;
    auto* command = new RecordingCommand("a");
    command->undoable = false;
    EXPECT_TRUE(processor.submit(Command(command), true));
    EXPECT_EQ("a", currentName(processor));
}

TEST(CommandProcessor, SubmitWithoutStoringLeavesTheRedoTailAndTheCursor)
{
    CommandProcessor processor;
    processor.submit(named("a"), true);
    processor.submit(named("b"), true);
    processor.undo();
    EXPECT_TRUE(processor.submit(named("c"), false));
    EXPECT_EQ("a", currentName(processor));
    EXPECT_TRUE(processor.canRedo());
    EXPECT_TRUE(processor.redo());
    EXPECT_EQ("b", currentName(processor));
}

TEST(CommandProcessor, FirstStoreGoesThroughClearCommandsAndIsDirtyUntilMarked)
{
    RecordingProcessor processor;
    processor.markAsSaved();
    processor.store(named("x"));
    EXPECT_THAT(recorder().take(), ElementsAre("store", "clearCommands", "setMenuStrings"));
    EXPECT_TRUE(processor.isDirty());
    processor.markAsSaved();
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, StoreAfterUndoingEverythingErasesTheHistory)
{
    CommandProcessor processor;
    processor.store(named("x"));
    processor.undo();
    recorder().take();
    processor.store(named("y"));
    EXPECT_THAT(recorder().take(), ElementsAre("~x"));
    EXPECT_EQ("y", currentName(processor));
    EXPECT_TRUE(processor.undo());
    EXPECT_FALSE(processor.canUndo());
}

TEST(CommandProcessor, StoreDropsTheWholeRedoTail)
{
    CommandProcessor processor;
    for (const char* name : {"a", "b", "c", "d"})
        processor.store(named(name));
    processor.undo();
    processor.undo();
    processor.undo();
    recorder().take();
    processor.store(named("e"));
    // From the second of the tail on, and the first of it last.
    EXPECT_THAT(recorder().take(), ElementsAre("~c", "~d", "~b"));
    EXPECT_EQ("e", currentName(processor));
    EXPECT_FALSE(processor.canRedo());
    EXPECT_TRUE(processor.undo());
    EXPECT_EQ("a", currentName(processor));
}

TEST(CommandProcessor, SavedMarkIsLostWithTheRedoTailItStandsIn)
{
    CommandProcessor processor;
    for (const char* name : {"a", "b", "c"})
        processor.store(named(name));
    processor.markAsSaved(); // on c
    processor.undo();
    processor.undo();
    processor.store(named("d"));
    EXPECT_TRUE(processor.isDirty());
    processor.undo();
    EXPECT_TRUE(processor.isDirty());
    processor.markAsSaved();
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, SavedMarkOnTheFirstOfTheRedoTailIsLostToo)
{
    CommandProcessor processor;
    processor.store(named("a"));
    processor.store(named("b"));
    processor.markAsSaved(); // on b
    processor.undo();
    processor.store(named("c"));
    EXPECT_TRUE(processor.isDirty());
    processor.undo();
    EXPECT_TRUE(processor.isDirty());
}

TEST(CommandProcessor, UndoIsDirtyAndRedoToTheSavedCommandIsCleanAgain)
{
    CommandProcessor processor;
    processor.store(named("x"));
    processor.markAsSaved();
    processor.undo();
    EXPECT_TRUE(processor.isDirty());
    processor.redo();
    EXPECT_FALSE(processor.isDirty());
    processor.store(named("y"));
    EXPECT_TRUE(processor.isDirty());
    processor.undo();
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, MarkSetWithEverythingUndoneIsWorthless)
{
    CommandProcessor processor;
    processor.store(named("x"));
    processor.undo();
    processor.markAsSaved();
    EXPECT_TRUE(processor.isDirty());
}

TEST(CommandProcessor, MaximumOfTwoDropsTheOldestAndKeepsTheMark)
{
    CommandProcessor processor(2);
    processor.store(named("x"));
    processor.store(named("y"));
    processor.markAsSaved();
    recorder().take();
    processor.store(named("z"));
    EXPECT_THAT(recorder().take(), ElementsAre("~x"));
    EXPECT_TRUE(processor.isDirty());
    processor.undo();
    EXPECT_EQ("y", currentName(processor));
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, MaximumOfOneLosesTheMarkWithItsCommandForEveryPosition)
{
    CommandProcessor processor(1);
    processor.store(named("x"));
    processor.markAsSaved();
    processor.store(named("y"));
    EXPECT_EQ("y", currentName(processor));
    EXPECT_TRUE(processor.isDirty());
    processor.undo();
    EXPECT_TRUE(processor.isDirty());
    processor.redo();
    EXPECT_TRUE(processor.isDirty());
    processor.markAsSaved();
    EXPECT_FALSE(processor.isDirty());
}

TEST(CommandProcessor, TailIsDroppedBeforeTrimmingSoThatTheOldestSurvives)
{
    CommandProcessor processor(2);
    processor.store(named("x"));
    processor.store(named("y"));
    processor.undo();
    recorder().take();
    processor.store(named("z"));
    EXPECT_THAT(recorder().take(), ElementsAre("~y"));
    processor.undo();
    EXPECT_EQ("x", currentName(processor));
}

TEST(CommandProcessor, MaximumOfMinusOneNeverTrims)
{
    CommandProcessor processor(-1);
    for (int i = 0; i < 1000; ++i)
        processor.store(named("c"));
    EXPECT_EQ(0, recorder().count("~c"));
    int undone = 0;
    while (processor.undo())
        ++undone;
    EXPECT_EQ(1000, undone);
}

TEST(CommandProcessor, MaximumOfZeroActsAsNoLimit)
{
    CommandProcessor processor(0);
    processor.store(named("a"));
    processor.store(named("b"));
    EXPECT_EQ(0, processor.getMaxCommands());
    EXPECT_TRUE(processor.undo());
    EXPECT_TRUE(processor.undo());
}

TEST(CommandProcessor, CommandThatCannotUndoBlocksUndoAndNotRedo)
{
    RecordingProcessor processor;
    processor.store(named("a"));
    auto* blocking = new RecordingCommand("b");
    processor.store(Command(blocking));
    processor.store(named("c"));
    processor.undo();
    blocking->undoable = false;
    recorder().take();
    EXPECT_FALSE(processor.canUndo());
    EXPECT_FALSE(processor.undo());
    EXPECT_THAT(recorder().lines(), IsEmpty());
    EXPECT_TRUE(processor.canRedo());
    EXPECT_EQ("b", currentName(processor));
}

TEST(CommandProcessor, UndoOfTheFirstPutsTheCursorAtTheEndAndRedoRunsItAgain)
{
    CommandProcessor processor;
    processor.submit(named("a"), true);
    EXPECT_TRUE(processor.undo());
    EXPECT_FALSE(processor.getCurrentCommand().isValid());
    EXPECT_TRUE(processor.canRedo());
    recorder().take();
    EXPECT_TRUE(processor.redo());
    EXPECT_THAT(recorder().take(), ElementsAre("do a"));
    EXPECT_EQ("a", currentName(processor));
}

TEST(CommandProcessor, NamesTheCommandThatRedoWouldRun)
{
    CommandProcessor processor;
    EXPECT_FALSE(processor.getRedoCommand().isValid());
    processor.submit(named("a"), true);
    processor.submit(named("b"), true);
    EXPECT_FALSE(processor.getRedoCommand().isValid());
    processor.undo();
    EXPECT_STREQ("b", processor.getRedoCommand().getName());
    processor.undo();
    EXPECT_STREQ("a", processor.getRedoCommand().getName());
    recorder().take();
    EXPECT_TRUE(processor.redo());
    EXPECT_THAT(recorder().take(), ElementsAre("do a"));
    EXPECT_STREQ("b", processor.getRedoCommand().getName());
    processor.submit(named("c"), true);
    EXPECT_FALSE(processor.getRedoCommand().isValid()) << "what could be redone is gone";
}

TEST(CommandProcessor, RedoWithTheCursorOnTheLastCommandRunsNothing)
{
    CommandProcessor processor;
    processor.submit(named("a"), true);
    recorder().take();
    EXPECT_FALSE(processor.redo());
    EXPECT_THAT(recorder().lines(), IsEmpty());
}

TEST(CommandProcessor, FailingUndoAndRedoLeaveTheCursorAndCallNoMenuHook)
{
    RecordingProcessor processor;
    auto* command = new RecordingCommand("a");
    processor.store(Command(command));
    command->undoResult = false;
    recorder().take();
    EXPECT_FALSE(processor.undo());
    EXPECT_THAT(recorder().take(), ElementsAre("undoCommand", "undo a"));
    EXPECT_EQ("a", currentName(processor));

    command->undoResult = true;
    processor.undo();
    command->doResult = false;
    recorder().take();
    EXPECT_FALSE(processor.redo());
    EXPECT_THAT(recorder().take(), ElementsAre("doCommand", "do a"));
    EXPECT_EQ("none", currentName(processor));
}

TEST(CommandProcessor, RedoUsesTheArgumentStoredInTheBody)
{
    CommandProcessor processor;
    Command command = named("a");
    command.invoke("red"); // no active document: it is kept only
    processor.submit(command, true);
    processor.undo();
    processor.redo();
    EXPECT_THAT(recorder().take(), ElementsAre("do a red", "undo a red", "do a red"));
}

TEST(CommandProcessor, ClearCommandsReleasesTheOldestFirst)
{
    RecordingProcessor processor;
    for (const char* name : {"a", "b", "c"})
        processor.store(named(name));
    recorder().take();
    processor.clearCommands();
    EXPECT_THAT(recorder().take(), ElementsAre("clearCommands", "~a", "~b", "~c"));
    EXPECT_FALSE(processor.isDirty());
    processor.markAsSaved();
    processor.CommandProcessor::clearCommands();
    EXPECT_THAT(recorder().lines(), IsEmpty());
}

TEST(CommandProcessor, IsUsableAgainAfterClearCommandsAndInitialize)
{
    RecordingProcessor processor;
    processor.store(named("a"));
    processor.clearCommands();
    recorder().take();
    processor.initialize();
    EXPECT_THAT(recorder().take(), ElementsAre("setMenuStrings"));
    EXPECT_FALSE(processor.canUndo());
    EXPECT_FALSE(processor.canRedo());
    processor.store(named("b"));
    EXPECT_EQ("b", currentName(processor));
}

TEST(CommandProcessor, InitializeDeclaresEverythingUndoneWithoutUndoing)
{
    CommandProcessor processor;
    processor.store(named("a"));
    processor.store(named("b"));
    recorder().take();
    processor.initialize();
    EXPECT_THAT(recorder().lines(), IsEmpty());
    EXPECT_FALSE(processor.canUndo());
    EXPECT_TRUE(processor.redo());
    EXPECT_EQ("a", currentName(processor));
}

TEST(CommandProcessor, ReleasesItsHistoryWhenItGoes)
{
    auto processor = std::make_unique<CommandProcessor>();
    processor->store(named("a"));
    Command kept = named("b");
    processor->store(kept);
    processor.reset();
    EXPECT_THAT(recorder().take(), ElementsAre("~a"));
    EXPECT_STREQ("b", kept.getName());
}

TEST(CommandProcessor, CommandThatChangesTheHistoryWhileItIsRedoneIsSafe)
{
    class Clearing : public vfApplication::CommandPrivate
    {
    public:
        using CommandPrivate::Do;
        using CommandPrivate::undo;
        bool canUndo() const override { return true; }
        bool Do(const vfBase::VfVariant&) override
        {
            if (processor) {
                processor->clearCommands();
                processor->initialize();
            }
            return true;
        }
        bool undo(const vfBase::VfVariant&) override { return true; }
        CommandProcessor* processor = nullptr;
    };
    CommandProcessor processor;
    auto* command = new Clearing;
    processor.store(Command(command));
    processor.undo();
    command->processor = &processor;
    EXPECT_TRUE(processor.redo());
    EXPECT_FALSE(processor.getCurrentCommand().isValid());
}

TEST(CommandProcessor, CopySharesTheHistoryWithItsSource)
{
    CommandProcessor processor;
    processor.store(named("a"));
    CommandProcessor copy(processor);
    EXPECT_EQ("a", currentName(copy));
    copy.store(named("b"));
    EXPECT_EQ("b", currentName(processor));
}

TEST(CommandProcessor, AssignmentSharesTheHistoryOfTheOther)
{
    CommandProcessor processor;
    processor.store(named("a"));
    CommandProcessor target;
    target.store(named("former"));
    target = processor;
    EXPECT_EQ("a", currentName(target));
    target.store(named("b"));
    EXPECT_EQ("b", currentName(processor));
    target = processor;
    EXPECT_EQ("b", currentName(target));
}

TEST(CommandProcessor, KeepsItsAccelerators)
{
    CommandProcessor processor;
    EXPECT_STREQ("Ctrl+Z", processor.getUndoAccelerator().c_str());
    EXPECT_STREQ("Ctrl+Y", processor.getRedoAccelerator().c_str());
    processor.setUndoAccelerator("Alt+Backspace");
    processor.setRedoAccelerator("Ctrl+Shift+Z");
    EXPECT_STREQ("Alt+Backspace", processor.getUndoAccelerator().c_str());
    EXPECT_STREQ("Ctrl+Shift+Z", processor.getRedoAccelerator().c_str());
}

TEST(CommandProcessor, CanBeMadeByName)
{
    const std::unique_ptr<vfBase::VfObject> object(
        vfBase::Registry_::instance().createType("vfApplication::CommandProcessor"));
    auto* processor = dynamic_cast<CommandProcessor*>(object.get());
    ASSERT_NE(nullptr, processor);
    EXPECT_EQ(-1, processor->getMaxCommands());
    EXPECT_EQ(&CommandProcessor::s_classInfo, processor->getClassInfo());
    EXPECT_STREQ("vfApplication::CommandProcessor", CommandProcessor::classId());
}

namespace {

/// Opens the protected operations, so that their slots can be read.
class Opened : public CommandProcessor
{
public:
    using CommandProcessor::doCommand;
    using CommandProcessor::undoCommand;
};

} // namespace

TEST(CommandProcessor, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&CommandProcessor::getClassInfo));
    EXPECT_EQ(3, slotOf(&CommandProcessor::getUniqueId));
    EXPECT_EQ(4, slotOf(&CommandProcessor::submit));
    EXPECT_EQ(5, slotOf(&CommandProcessor::store));
    EXPECT_EQ(6, slotOf(&CommandProcessor::undo));
    EXPECT_EQ(7, slotOf(&CommandProcessor::redo));
    EXPECT_EQ(8, slotOf(&CommandProcessor::canUndo));
    EXPECT_EQ(9, slotOf(&CommandProcessor::canRedo));
    EXPECT_EQ(10, slotOf(&CommandProcessor::initialize));
    EXPECT_EQ(11, slotOf(&CommandProcessor::setMenuStrings));
    EXPECT_EQ(12, slotOf(&CommandProcessor::clearCommands));
    EXPECT_EQ(13, slotOf(&CommandProcessor::isDirty));
    EXPECT_EQ(14, slotOf(&Opened::doCommand));
    EXPECT_EQ(15, slotOf(&Opened::undoCommand));
}
