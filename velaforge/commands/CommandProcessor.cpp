// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandProcessor.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>

#include <osg/ref_ptr>

#include <cassert>
#include <cstdint>
#include <deque>
#include <utility>

namespace vfApplication {

namespace {

/// A place in the history: on a command, at the end marker, or nowhere.
///
/// Commands are numbered for good as they are stored, so that a place keeps its meaning when the
/// oldest are trimmed and can never be mistaken for that of an erased command.
class Position
{
public:
    static Position end() { return Position(Kind::End, 0); }
    static Position none() { return Position(Kind::None, 0); }
    static Position at(std::uint64_t number) { return Position(Kind::Command, number); }

    bool isEnd() const { return m_kind == Kind::End; }
    bool isNone() const { return m_kind == Kind::None; }
    bool isCommand() const { return m_kind == Kind::Command; }
    std::uint64_t number() const { return m_number; }

    bool operator==(const Position& other) const
    {
        return m_kind == other.m_kind && m_number == other.m_number;
    }
    bool operator!=(const Position& other) const { return !(*this == other); }

private:
    enum class Kind : std::uint8_t
    {
        Command,
        End,
        None
    };

    Position(Kind kind, std::uint64_t number) : m_number(number), m_kind(kind) {}

    std::uint64_t m_number;
    Kind m_kind;
};

/// A counted CommandPrivate, kept in the type in which a handle keeps it, so that it moves from there without counting.
using Body = osg::ref_ptr<osg::Referenced>;

} // namespace

/// The history holds counted bodies rather than handles: a long one then costs a pointer a command.
/// It changes at its two ends only.
class CommandProcessorPrivate
{
public:
    explicit CommandProcessorPrivate(int maximum) : maxCommands(maximum) {}
    virtual ~CommandProcessorPrivate() { releaseAll(); }

    std::uint64_t endNumber() const { return firstNumber + commands.size(); }
    CommandPrivate* command(const Position& place) const
    {
        return static_cast<CommandPrivate*>(
            commands[static_cast<std::size_t>(place.number() - firstNumber)].get());
    }
    bool contains(const Position& place) const
    {
        return place.isCommand() && place.number() >= firstNumber && place.number() < endNumber();
    }
    Position last() const { return Position::at(endNumber() - 1); }

    /// A command going away may run foreign code, so it is off the history before it goes.
    void eraseFirst()
    {
        Body released;
        released.swap(commands.front());
        forgetSaved(Position::at(firstNumber));
        commands.pop_front();
        ++firstNumber;
    }

    /// Erases what stands behind the cursor: from the second on, and the first of them last.
    void eraseTail()
    {
        const std::size_t kept = static_cast<std::size_t>(currentCommand.number() - firstNumber) + 1;
        std::deque<Body> tail(commands.begin() + static_cast<std::ptrdiff_t>(kept), commands.end());
        if (lastSavedCommand.isCommand() && lastSavedCommand.number() > currentCommand.number())
            lastSavedCommand = Position::none();
        commands.resize(kept);
        const Body anchor = tail.front();
        while (!tail.empty())
            tail.pop_front();
    }

    void releaseAll()
    {
        while (!commands.empty())
            eraseFirst();
    }

    int maxCommands;
    std::deque<Body> commands;
    std::uint64_t firstNumber = 0;
    Position currentCommand = Position::end();
    Position lastSavedCommand = Position::end();
    vfBase::VfString undoAccelerator = "Ctrl+Z";
    vfBase::VfString redoAccelerator = "Ctrl+Y";

private:
    void forgetSaved(const Position& place)
    {
        if (lastSavedCommand == place)
            lastSavedCommand = Position::none();
    }
};

namespace {

vfBase::VfObject* createProcessor()
{
    return new CommandProcessor(-1);
}

/// @return the place that redo would run, none when there is none
Position redoCandidate(const CommandProcessorPrivate& d)
{
    assert(!d.currentCommand.isNone() && "initialize() must follow clearCommands()");
    if (d.currentCommand.isEnd())
        return d.commands.empty() ? Position::none() : Position::at(d.firstNumber);
    if (d.currentCommand.isCommand() && d.currentCommand != d.last())
        return Position::at(d.currentCommand.number() + 1);
    return Position::none();
}

CommandPrivate* currentBody(const CommandProcessorPrivate& d)
{
    assert(!d.currentCommand.isNone() && "initialize() must follow clearCommands()");
    return d.currentCommand.isCommand() ? d.command(d.currentCommand) : nullptr;
}

} // namespace

const vfBase::ClassInfo CommandProcessor::s_classInfo("vfApplication", "CommandProcessor",
                                                      CommandProcessor::classId(),
                                                      &vfBase::VfObject::s_classInfo, nullptr,
                                                      static_cast<int>(sizeof(CommandProcessor)),
                                                      &createProcessor);

CommandProcessor::CommandProcessor(int maximum) : d(new CommandProcessorPrivate(maximum)) {}

CommandProcessor::CommandProcessor(const CommandProcessor& other) : vfBase::VfObject(other), d(other.d) {}

CommandProcessor& CommandProcessor::operator=(const CommandProcessor& other)
{
    d = other.d;
    return *this;
}

CommandProcessor::~CommandProcessor()
{
    delete d;
}

const vfBase::ClassInfo* CommandProcessor::getClassInfo() const
{
    return &s_classInfo;
}

bool CommandProcessor::canUndo() const
{
    const CommandPrivate* body = currentBody(*d);
    return body && body->canUndo();
}

bool CommandProcessor::canRedo() const
{
    return redoCandidate(*d).isCommand();
}

bool CommandProcessor::isDirty() const
{
    if (d->commands.empty())
        return false;
    if (d->currentCommand.isEnd())
        return true;
    return d->currentCommand != d->lastSavedCommand;
}

Command CommandProcessor::getCurrentCommand()
{
    return Command(currentBody(*d));
}

Command CommandProcessor::getRedoCommand() const
{
    const Position next = redoCandidate(*d);
    return Command(next.isCommand() ? d->command(next) : nullptr);
}

int CommandProcessor::getMaxCommands() const
{
    return d->maxCommands;
}

const vfBase::VfString& CommandProcessor::getUndoAccelerator() const
{
    return d->undoAccelerator;
}

const vfBase::VfString& CommandProcessor::getRedoAccelerator() const
{
    return d->redoAccelerator;
}

bool CommandProcessor::submit(Command command, bool storeIt)
{
    assert(command.isValid());
    if (!doCommand(command))
        return false;
    if (storeIt)
        store(std::move(command));
    return true;
}

void CommandProcessor::store(Command command)
{
    assert(command.isValid());
    assert(!d->currentCommand.isNone() && "initialize() must follow clearCommands()");
    if (d->currentCommand.isEnd())
        clearCommands();
    else if (d->currentCommand.isCommand() && d->currentCommand != d->last())
        d->eraseTail();

    // After the tail, so that the oldest command goes only when the history is full without it.
    if (!d->commands.empty() &&
        static_cast<std::uint32_t>(d->commands.size()) == static_cast<std::uint32_t>(d->maxCommands))
        d->eraseFirst();

    d->commands.emplace_back();
    Body body = command.takeImp();
    d->commands.back().swap(body);
    d->currentCommand = d->last();
    setMenuStrings();
}

bool CommandProcessor::undo()
{
    Command command = getCurrentCommand();
    if (!command.isValid())
        return false;
    if (!command.canUndo())
        return false;
    if (!undoCommand(command))
        return false;
    if (d->currentCommand.isCommand()) {
        const std::uint64_t number = d->currentCommand.number();
        d->currentCommand = number == d->firstNumber ? Position::end() : Position::at(number - 1);
    }
    setMenuStrings();
    return true;
}

bool CommandProcessor::redo()
{
    const Position candidate = redoCandidate(*d);
    if (!candidate.isCommand())
        return false;
    Command command(d->command(candidate));
    if (!doCommand(command))
        return false;
    if (d->contains(candidate)) // unless the command changed the history itself
        d->currentCommand = candidate;
    setMenuStrings();
    return true;
}

void CommandProcessor::initialize()
{
    d->currentCommand = Position::end();
    setMenuStrings();
}

void CommandProcessor::setMenuStrings() {}

void CommandProcessor::clearCommands()
{
    d->releaseAll();
    d->currentCommand = Position::none();
    d->lastSavedCommand = Position::none();
}

bool CommandProcessor::doCommand(Command& command)
{
    return command.Do();
}

bool CommandProcessor::undoCommand(Command& command)
{
    return command.undo();
}

void CommandProcessor::markAsSaved()
{
    d->lastSavedCommand = d->currentCommand;
}

void CommandProcessor::setUndoAccelerator(const vfBase::VfString& accelerator)
{
    d->undoAccelerator = accelerator;
}

void CommandProcessor::setRedoAccelerator(const vfBase::VfString& accelerator)
{
    d->redoAccelerator = accelerator;
}

const char* CommandProcessor::classId()
{
    return "vfApplication::CommandProcessor";
}

} // namespace vfApplication
