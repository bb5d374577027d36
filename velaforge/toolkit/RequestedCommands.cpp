// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/RequestedCommands.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/Document.h>
#include <velaforge/toolkit/CommandNames.h>
#include <velaforge/toolkit/ModifiedDocuments.h>
#include <velaforge/toolkit/Script.h>

#include <string>
#include <vector>

namespace vfApplication {

namespace {

using Host = RequestedCommands::Host;
using Result = RequestedCommands::Result;

/// A command that the command line or a script names.
struct Invocation
{
    std::string name;
    Command command;
    vfBase::VfVariant argument;

    /// File and line of a script, for messages; empty for the command line.
    std::string where;

    std::string subject() const { return where + name; }
    bool isOfScript() const { return !where.empty(); }
};

/// @param text  a name, or a name, "=" and an argument
Invocation makeInvocation(const std::string& text)
{
    const std::size_t equals = text.find('=');
    Invocation invocation;
    invocation.name = text.substr(0, equals);
    if (equals != std::string::npos)
        invocation.argument = vfBase::VfVariant(vfBase::VfString(text.substr(equals + 1)));
    return invocation;
}

/// Makes the commands and reports each name that is not registered.
/// @return false if there is such a name
bool findCommands(std::vector<Invocation>& invocations, const Host& host)
{
    bool areAllKnown = true;
    for (Invocation& invocation : invocations) {
        invocation.command = Command::getCommandByName(invocation.name);
        if (invocation.command.isValid())
            continue;
        areAllKnown = false;
        const vfBase::VfString nearest = nearestName(invocation.name, commandNames());
        host.tell(invocation.subject(),
                  nearest.empty() ? std::string("there is no such command")
                                  : "there is no such command; did you mean " + nearest.str() + "?");
    }
    return areAllKnown;
}

bool isSet(const Command& command, const char* property)
{
    return command.getProperties().value(property, vfBase::VfVariant()).toBool();
}

/// Invokes a command and finds out whether it succeeded, since Command::invoke() returns nothing: a command
/// that can be undone is in the undo history afterwards; any command may set its property "failed".
Result invoke(Invocation& invocation, const Host& host)
{
    const unsigned int failuresBefore = host.failureCount();
    const Document* document = Application::instance(false)->getActiveDocument();
    if (!document && !isSet(invocation.command, "standalone")) {
        host.tell(invocation.subject(), "there is no document for the command");
        return Result::Stopped;
    }
    invocation.command.invoke(invocation.argument);
    followHistories(Application::instance(false)->getDocManager());
    // For a script a further message has the line; otherwise the message of the document manager is enough.
    const bool isTold = !invocation.isOfScript() && host.failureCount() > failuresBefore;
    if (isSet(invocation.command, "failed")) {
        if (!invocation.isOfScript())
            return Result::Failed;
        host.tell(invocation.subject(), "the command could not be carried out");
        return Result::Stopped;
    }
    if (!document || !invocation.command.canUndo() ||
        Application::instance(false)->getActiveDocument() != document)
        return Result::Done;
    if (document->getCommandProcessor()->getCurrentCommand() == invocation.command)
        return Result::Done;
    if (!isTold)
        host.tell(invocation.subject(), "the command could not be carried out");
    return Result::Stopped;
}

Result invokeInOrder(std::vector<Invocation>& invocations, const Host& host)
{
    Result all = Result::Done;
    for (Invocation& invocation : invocations) {
        if (host.isEnding())
            break;
        Result result = Result::Stopped;
        try {
            result = invoke(invocation, host);
        } catch (...) {
            host.tell(invocation.subject(), vfBase::BaseException::describeCurrent());
        }
        if (result == Result::Stopped)
            return result;
        if (result == Result::Failed)
            all = result;
    }
    return all;
}

Result runAll(const vfBase::VfString& script, const vfBase::StringList& commands, const Host& host)
{
    std::vector<Invocation> invocations;
    std::vector<ScriptLine> lines;
    vfBase::VfString reason;
    if (!script.empty() && !readScript(script, lines, reason)) {
        host.tell(script, reason);
        return Result::Stopped;
    }
    for (const ScriptLine& line : lines) {
        invocations.push_back(makeInvocation(line.text));
        invocations.back().where = line.where;
    }
    for (unsigned int i = 0; i < commands.size(); ++i)
        invocations.push_back(makeInvocation(commands.get(i).str()));
    return findCommands(invocations, host) ? invokeInOrder(invocations, host) : Result::Stopped;
}

} // namespace

void RequestedCommands::declareOptions(vfBase::ArgumentParser& parser)
{
    parser.addCommandLineOption("--invoke <command>[=<argument>]",
                                "Run a command on the active document; may be repeated", nullptr);
    parser.addCommandLineOption("--script <file>",
                                "Run the commands of a file, one per line; - reads standard input", nullptr);
}

void RequestedCommands::readOptions(vfBase::ArgumentParser& parser)
{
    parser.readOptionParameter("--script", m_script);
    parser.readOptionParameter("--invoke", m_commands);
}

RequestedCommands::Result RequestedCommands::run(const Host& host) const
{
    try {
        return runAll(m_script, m_commands, host);
    } catch (...) {
        host.tell("commands", vfBase::BaseException::describeCurrent());
        return Result::Stopped;
    }
}

} // namespace vfApplication
