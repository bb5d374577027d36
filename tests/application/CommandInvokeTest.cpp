// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"

#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::Command;
using vfBase::VfVariant;
using vfTest::recorder;
using vfTest::RecordingApplication;

namespace {

class Adding : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return true; }
    bool Do(const VfVariant& argument) override
    {
        vfTest::record("Do " + std::to_string(argument.toInteger()));
        return succeeds;
    }
    bool undo(const VfVariant& argument) override
    {
        vfTest::record("undo " + std::to_string(argument.toInteger()));
        return true;
    }

    bool succeeds = true;
};

/// An application with one open document.
struct Bench : RecordingApplication
{
    Bench()
    {
        makeTemplate(manager);
        document = open("a.obj");
    }
    vfTest::RecordingDocument* document;
};

} // namespace

TEST(CommandInvoke, WithoutAnActiveDocumentTheArgumentIsKeptAndNothingRuns)
{
    RecordingApplication bench;
    const osg::ref_ptr<Adding> body = new Adding;
    Command(body.get()).invoke(5);
    EXPECT_EQ(5, body->getArgument().toInteger());
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(CommandInvoke, WithoutAnApplicationTheArgumentIsKept)
{
    const osg::ref_ptr<Adding> body = new Adding;
    Command(body.get()).invoke(5);
    EXPECT_EQ(5, body->getArgument().toInteger());
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(CommandInvoke, RunsThroughTheHistoryOfTheActiveDocument)
{
    Bench bench;
    const osg::ref_ptr<Adding> body = new Adding;
    Command(body.get()).invoke(5);
    EXPECT_THAT(recorder().take(), ElementsAre("Do 5"));
    vfApplication::CommandProcessor& history = *bench.document->getCommandProcessor();
    EXPECT_TRUE(history.getCurrentCommand() == Command(body.get()));
    EXPECT_TRUE(history.undo());
    EXPECT_TRUE(history.redo());
    EXPECT_THAT(recorder().take(), ElementsAre("undo 5", "Do 5"));
}

TEST(CommandInvoke, WithoutAnArgumentItOverwritesTheStoredOneWithTheEmptyValue)
{
    Bench bench;
    const osg::ref_ptr<Adding> body = new Adding;
    Command command(body.get());
    command.invoke(5);
    command.invoke();
    EXPECT_TRUE(body->getArgument().isEmpty());
    EXPECT_THAT(recorder().take(), ElementsAre("Do 5", "Do 0"));
}

TEST(CommandInvoke, ACommandThatFailsIsNotStored)
{
    Bench bench;
    const osg::ref_ptr<Adding> body = new Adding;
    body->succeeds = false;
    Command(body.get()).invoke(1);
    EXPECT_THAT(recorder().take(), ElementsAre("Do 1"));
    EXPECT_FALSE(bench.document->getCommandProcessor()->getCurrentCommand().isValid());
}

TEST(CommandInvoke, OneBodyMayStandInTheHistoriesOfTwoDocuments)
{
    Bench bench;
    const osg::ref_ptr<Adding> body = new Adding;
    Command command(body.get());
    command.invoke(1);
    vfTest::RecordingDocument* second = bench.open("b.obj");
    command.invoke(2);
    EXPECT_TRUE(bench.document->getCommandProcessor()->getCurrentCommand() == command);
    EXPECT_TRUE(second->getCommandProcessor()->getCurrentCommand() == command);
    EXPECT_EQ(2, body->getArgument().toInteger());
}
