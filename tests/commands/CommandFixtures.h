// SPDX-License-Identifier: MIT
#pragma once

#include "support/Recorder.h"

#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>

#include <string>

namespace vfTest {

/// A command that records its calls by its name, and answers as it is told.
class RecordingCommand : public vfApplication::CommandPrivate
{
public:
    explicit RecordingCommand(const std::string& name = "command") { setName(name); }

    using CommandPrivate::Do;
    using CommandPrivate::undo;

    bool canUndo() const override { return undoable; }
    bool Do(const vfBase::VfVariant& argument) override
    {
        record("do " + getName() + suffix(argument));
        return doResult;
    }
    bool undo(const vfBase::VfVariant& argument) override
    {
        record("undo " + getName() + suffix(argument));
        return undoResult;
    }

    bool undoable = true;
    bool doResult = true;
    bool undoResult = true;

protected:
    ~RecordingCommand() override { record("~" + getName()); }

private:
    static std::string suffix(const vfBase::VfVariant& argument)
    {
        return argument.isEmpty() ? std::string() : " " + argument.toString().str();
    }
};

/// A processor that records the calls of its own virtual operations.
class RecordingProcessor : public vfApplication::CommandProcessor
{
public:
    using CommandProcessor::CommandProcessor;

    void store(vfApplication::Command command) override
    {
        record("store");
        CommandProcessor::store(command);
    }
    void setMenuStrings() override { record("setMenuStrings"); }
    void clearCommands() override
    {
        record("clearCommands");
        CommandProcessor::clearCommands();
    }

protected:
    bool doCommand(vfApplication::Command& command) override
    {
        record("doCommand");
        return CommandProcessor::doCommand(command);
    }
    bool undoCommand(vfApplication::Command& command) override
    {
        record("undoCommand");
        return CommandProcessor::undoCommand(command);
    }
};

} // namespace vfTest
