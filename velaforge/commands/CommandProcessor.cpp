// SPDX-License-Identifier: MIT
#include <velaforge/commands/CommandProcessor.h>

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/CopyGroup.h>
#include <velaforge/base/LeakForProcess.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Require.h>
#include <velaforge/commands/CommandPrivate.h>

#include <osg/ref_ptr>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

namespace vfApplication {

namespace {

/// A position in the history: on a command, at the end marker, or none.
///
/// Each command has a number of its own, given when it is stored. A position thus stays right when the oldest
/// commands are erased, and the position of an erased command never equals that of another.
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

/// A reference on a CommandPrivate, in the type in which a handle stores it: moving it from there does not
/// count.
using Body = osg::ref_ptr<osg::Referenced>;

} // namespace

/// Holds references on bodies rather than handles: a history then needs one pointer per command.
///
/// The destructor of a command may use this history. Each body therefore leaves the history, and every
/// position is corrected, before the body is released. One free slot is reserved before a command runs, so
/// that storing it cannot fail.
class CommandProcessorPrivate
{
public:
    explicit CommandProcessorPrivate(int maximum) : maxCommands(maximum) {}
    virtual ~CommandProcessorPrivate()
    {
        vfBase::LifeWatch<CommandProcessorPrivate>::end(this);
        releaseAll();
    }

    std::size_t size() const { return m_slots.size() - (m_hasFreeSlot ? 1 : 0); }
    bool isEmpty() const { return size() == 0; }
    Position first() const { return Position::at(m_firstNumber); }
    Position last() const { return Position::at(endNumber() - 1); }

    bool contains(const Position& place) const
    {
        return place.isCommand() && place.number() >= m_firstNumber && place.number() < endNumber();
    }

    /// Returns the command at @p place, null if there is none.
    CommandPrivate* command(const Position& place) const
    {
        return contains(place) ? static_cast<CommandPrivate*>(m_slots[indexOf(place)].get()) : nullptr;
    }

    /// Returns the number of commands behind the cursor: all of them if no command is done.
    std::size_t sizeOfRedoTail() const
    {
        return contains(currentCommand) ? size() - indexOf(currentCommand) - 1 : size();
    }

    /// Allocates the slot that the next append() fills.
    void reserve()
    {
        if (m_hasFreeSlot)
            return;
        m_slots.emplace_back();
        m_hasFreeSlot = true;
    }

    /// Appends a command and sets the cursor to it. The caller has called reserve().
    void append(Body&& body)
    {
        m_slots.back().swap(body);
        m_hasFreeSlot = false;
        currentCommand = last();
    }

    /// Releases the oldest command.
    void eraseFirst()
    {
        Body released;
        released.swap(m_slots.front());
        if (lastSavedCommand == first())
            lastSavedCommand = Position::none();
        m_slots
            .pop_front(); // and with it the state before that command: states are numbered from m_firstNumber
        ++m_firstNumber;
    }

    /// Releases the redo tail: the commands behind its first, oldest first, then that first.
    void eraseTail()
    {
        if (unmodifiedState && *unmodifiedState > state())
            unmodifiedState.reset();
        const vfBase::LifeWatch<CommandProcessorPrivate> watch(this);
        while (!watch.isGone() && contains(currentCommand) && sizeOfRedoTail() > 1)
            eraseBehindAnchor();
        if (watch.isGone() || !contains(currentCommand) || sizeOfRedoTail() != 1)
            return;
        Body anchor;
        anchor.swap(m_slots[indexOf(last())]);
        if (lastSavedCommand == last())
            lastSavedCommand = Position::none();
        eraseSlots(size() - 1, 1);
    }

    void releaseAll()
    {
        const vfBase::LifeWatch<CommandProcessorPrivate> watch(this);
        const bool isUnmodified = unmodifiedState == state();
        unmodifiedState.reset();
        for (std::size_t count = size(); count > 0 && !watch.isGone() && !isEmpty(); --count)
            eraseFirst();
        // Releasing commands changes nothing of the document.
        if (!watch.isGone() && isEmpty() && isUnmodified)
            unmodifiedState = state();
    }

    /// Returns a number for what the commands that are done have made of the document: that of the first command that is not
    /// done. Commands that are erased keep their numbers.
    std::uint64_t state() const
    {
        return contains(currentCommand) ? currentCommand.number() + 1 : m_firstNumber;
    }

    /// The state in which the document was not modified; nothing if its commands were erased.
    std::optional<std::uint64_t> unmodifiedState = 0;

    /// The document was changed by something that undo does not revert.
    bool hasOtherChanges = false;

    /// Commands run whose changes undo reverts, or which are being undone.
    int recording = 0;

    /// The document was changed while they ran.
    bool isChangedInRecording = false;

    int maxCommands;
    Position currentCommand = Position::end();
    Position lastSavedCommand = Position::end();
    vfBase::VfString undoAccelerator = "Ctrl+Z";
    vfBase::VfString redoAccelerator = "Ctrl+Y";

private:
    std::uint64_t endNumber() const { return m_firstNumber + size(); }
    std::size_t indexOf(const Position& place) const
    {
        return static_cast<std::size_t>(place.number() - m_firstNumber);
    }

    void eraseSlots(std::size_t index, std::size_t count)
    {
        const auto from = m_slots.begin() + static_cast<std::ptrdiff_t>(index);
        m_slots.erase(from, from + static_cast<std::ptrdiff_t>(count));
    }

    /// Releases commands behind the first of the redo tail, oldest first: up to 4096, whose references are
    /// moved to the stack, because releasing a command must not allocate.
    void eraseBehindAnchor()
    {
        constexpr std::size_t most = 4096;
        Body released[most];
        const std::size_t from = indexOf(currentCommand) + 2;
        const std::size_t count = std::min(most, size() - from);
        for (std::size_t i = 0; i < count; ++i)
            released[i].swap(m_slots[from + i]);
        if (lastSavedCommand.isCommand() && lastSavedCommand.number() >= m_firstNumber + from) {
            const bool isErased = lastSavedCommand.number() < m_firstNumber + from + count;
            lastSavedCommand = isErased ? Position::none() : Position::at(lastSavedCommand.number() - count);
        }
        eraseSlots(from, count);
        for (std::size_t i = 0; i < count; ++i)
            released[i] = nullptr;
    }

    /// The commands, oldest first; behind them the free slot, if there is one.
    std::deque<Body> m_slots;
    bool m_hasFreeSlot = false;
    /// The number of the oldest command.
    std::uint64_t m_firstNumber = 0;
};

namespace {

using Watch = vfBase::LifeWatch<CommandProcessorPrivate>;

/// Marks a history whose cursor moves. A command that calls undo or redo while it is undone or redone would
/// otherwise recurse without end.
const vfBase::Call movingCursor{"CommandProcessor::undo"};

using MovingCursor = vfBase::RunningCall<CommandProcessorPrivate>;

/// While it exists, changes of the document belong to a command that is stored. Unless it ends with done(), they are changes
/// that undo does not revert.
template <class Gone>
class Recording
{
public:
    /// @param gone  tells whether @p d still exists
    Recording(CommandProcessorPrivate* d, const Gone& gone)
        : m_history(*d), m_gone(gone), m_wasChanged(std::exchange(d->isChangedInRecording, false))
    {
        ++m_history.recording;
    }

    ~Recording()
    {
        if (m_gone.isGone())
            return;
        --m_history.recording;
        if (m_history.isChangedInRecording && !m_isDone)
            m_history.hasOtherChanges = true;
        m_history.isChangedInRecording = m_history.isChangedInRecording || m_wasChanged;
    }

    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    void done() { m_isDone = true; }

private:
    CommandProcessorPrivate& m_history;
    const Gone& m_gone;
    bool m_wasChanged;
    bool m_isDone = false;
};

vfBase::VfObject* createProcessor()
{
    return new CommandProcessor(-1);
}

/// Returns the position of the command that redo would run; none if there is no redo tail.
Position redoCandidate(const CommandProcessorPrivate& d)
{
    if (d.sizeOfRedoTail() == 0)
        return Position::none();
    return d.contains(d.currentCommand) ? Position::at(d.currentCommand.number() + 1) : d.first();
}

} // namespace

const vfBase::ClassInfo CommandProcessor::s_classInfo("vfApplication", "CommandProcessor",
                                                      CommandProcessor::classId(),
                                                      &vfBase::VfObject::s_classInfo, nullptr,
                                                      static_cast<int>(sizeof(CommandProcessor)),
                                                      &createProcessor);

CommandProcessor::CommandProcessor(int maximum) : d(new CommandProcessorPrivate(maximum))
{
    vfBase::CopyGroup::leave(this);
}

CommandProcessor::CommandProcessor(const CommandProcessor& other) : vfBase::VfObject(other), d(other.d)
{
    vfBase::CopyGroup::join(this, &other);
}

CommandProcessor& CommandProcessor::operator=(const CommandProcessor& other)
{
    if (d == other.d)
        return *this;
    vfBase::CopyGroup::join(this, &other);
    // By contract the former history is never released: other processors may use it.
    vfBase::leakForProcess(d);
    d = other.d;
    return *this;
}

CommandProcessor::~CommandProcessor()
{
    if (vfBase::CopyGroup::end(this))
        delete d;
}

const vfBase::ClassInfo* CommandProcessor::getClassInfo() const
{
    return &s_classInfo;
}

bool CommandProcessor::canUndo() const
{
    const osg::ref_ptr<const CommandPrivate> body = d->command(d->currentCommand);
    return body && body->canUndo();
}

bool CommandProcessor::canRedo() const
{
    return redoCandidate(*d).isCommand();
}

bool CommandProcessor::isDirty() const
{
    if (d->isEmpty())
        return false;
    if (d->lastSavedCommand.isEnd() || d->currentCommand.isEnd())
        return true;
    return d->currentCommand != d->lastSavedCommand;
}

Command CommandProcessor::getCurrentCommand()
{
    return Command(d->command(d->currentCommand));
}

Command CommandProcessor::getRedoCommand() const
{
    return Command(d->command(redoCandidate(*d)));
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
    VF_REQUIRE_APPLICATION_THREAD("CommandProcessor::submit");
    VF_REQUIRE(command.isValid(), "CommandProcessor::submit", "the command has no body");
    // Allocated before the command runs, so that storing it cannot fail.
    if (!storeIt)
        return doCommand(command);
    d->reserve();
    const Watch watch(d);
    Recording recording(d, watch);
    if (!doCommand(command))
        return false;
    // The command may have closed the document, as "Close" does.
    if (watch.isGone())
        return true;
    const std::uint64_t before = d->state();
    store(std::move(command));
    // A derived class may store nothing.
    if (!watch.isGone() && d->state() != before)
        recording.done();
    return true;
}

void CommandProcessor::store(Command command)
{
    VF_REQUIRE_APPLICATION_THREAD("CommandProcessor::store");
    VF_REQUIRE(command.isValid(), "CommandProcessor::store", "the command has no body");
    d->reserve();
    const Watch watch(d);
    if (!d->contains(d->currentCommand))
        clearCommands();
    else
        d->eraseTail();

    // After the redo tail, so that the oldest command is released only if the history is full without the
    // tail.
    if (!watch.isGone() && !d->isEmpty() &&
        static_cast<std::uint32_t>(d->size()) == static_cast<std::uint32_t>(d->maxCommands))
        d->eraseFirst();

    if (watch.isGone())
        return;
    // Again: the destructor of a released command may have stored another command.
    d->reserve();
    d->append(command.takeImp());
    setMenuStrings();
}

bool CommandProcessor::undo()
{
    VF_REQUIRE_APPLICATION_THREAD("CommandProcessor::undo");
    if (MovingCursor::isRunning(d, movingCursor))
        return false;
    Command command = getCurrentCommand();
    if (!command.isValid())
        return false;
    const MovingCursor running(d, movingCursor);
    Recording recording(d, running);
    const Position before = d->currentCommand;
    if (!command.canUndo() || running.isGone())
        return false;
    if (!undoCommand(command))
        return false;
    if (running.isGone())
        return true;
    // Not if the command moved the cursor by storing another command or clearing the history.
    if (d->currentCommand == before && d->contains(before)) {
        d->currentCommand = before == d->first() ? Position::end() : Position::at(before.number() - 1);
        recording.done();
    }
    setMenuStrings();
    return true;
}

bool CommandProcessor::redo()
{
    VF_REQUIRE_APPLICATION_THREAD("CommandProcessor::redo");
    if (MovingCursor::isRunning(d, movingCursor))
        return false;
    const Position candidate = redoCandidate(*d);
    Command command(d->command(candidate));
    if (!command.isValid())
        return false;
    const MovingCursor running(d, movingCursor);
    Recording recording(d, running);
    const Position before = d->currentCommand;
    if (!doCommand(command))
        return false;
    if (running.isGone())
        return true;
    if (d->currentCommand == before && d->contains(candidate)) {
        d->currentCommand = candidate;
        recording.done();
    }
    setMenuStrings();
    return true;
}

void CommandProcessor::initialize()
{
    // Commands that only count as undone have changed the document all the same.
    if (d->contains(d->currentCommand))
        d->hasOtherChanges = true;
    d->currentCommand = Position::end();
    setMenuStrings();
}

void CommandProcessor::setMenuStrings() {}

void CommandProcessor::clearCommands()
{
    const Watch watch(d);
    d->releaseAll();
    if (watch.isGone())
        return;
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

bool CommandProcessor::isAtUnmodifiedState() const
{
    // A command that runs is on the way to another state.
    return d->recording == 0 && !d->hasOtherChanges && d->unmodifiedState == d->state();
}

void CommandProcessor::noteModified(bool modified)
{
    if (!modified) {
        d->hasOtherChanges = false;
        d->isChangedInRecording = false;
        // A command that runs leads to a state that has no number yet.
        if (d->recording > 0)
            d->unmodifiedState.reset();
        else
            d->unmodifiedState = d->state();
    } else if (d->recording > 0) {
        d->isChangedInRecording = true;
    } else {
        d->hasOtherChanges = true;
    }
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
