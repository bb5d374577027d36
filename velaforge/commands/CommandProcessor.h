// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>
#include <velaforge/commands/Command.h>

namespace vfApplication {

class CommandProcessorPrivate;

/// The undo history of one document.
///
///     processor.submit(command, true);  // runs it and, if it succeeds, stores it
///     processor.undo();
///     processor.redo();
///     processor.markAsSaved();
///     processor.isDirty();              // false
///
/// The cursor is on the command done last, or at the end if no command is done. The commands behind the
/// cursor, which were undone, are the redo tail. Storing a command releases the redo tail and, at the
/// maximum, the oldest command. A command that cannot undo is stored like any other, and blocks the undoing
/// of all commands before it. clearCommands leaves the cursor at no position: a caller calls initialize()
/// next.
///
/// A command may use this history while it runs and may close its document. undo() and redo() called by a
/// command that is being undone or redone return false.
///
/// CommandProcessor is no handle: a copy shares the history with its source, and the first of them to be
/// destroyed releases it; use none of the others after that. Document has one and deletes it.
class VFAPPLICATION_EXPORT CommandProcessor : public vfBase::VfObject
{
public:
    /// The class record, with a creator that sets no limit.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes an empty history of at most @p maximum commands; -1 means no limit.
    CommandProcessor(int maximum = -1);

    /// Shares the history of @p other.
    CommandProcessor(const CommandProcessor& other);

    /// Shares the history of @p other. The former history is never released.
    CommandProcessor& operator=(const CommandProcessor& other);

    // In the order of their slots, which is part of the binary interface. They call one another through these
    // slots, so that a derived class sees the calls.
    const vfBase::ClassInfo* getClassInfo() const override;
    ~CommandProcessor() override;

    /// Runs @p command, which must have a body, and stores it if it succeeded and @p storeIt is true.
    /// @return what the command returned; false leaves the history unchanged
    virtual bool submit(Command command, bool storeIt);

    /// Stores @p command, which must have a body, as the one done last, without running it.
    virtual void store(Command command);

    /// Reverts the command at the cursor and moves the cursor back by one.
    /// @return false, with the cursor unchanged, if there is none, if it cannot undo, or if it failed
    virtual bool undo();

    /// Runs the first command of the redo tail again and moves the cursor to it.
    /// @return false, with the cursor unchanged, if there is none or it failed
    virtual bool redo();

    /// Returns whether there is a command at the cursor and it can be undone.
    virtual bool canUndo() const;

    /// Returns whether there is a redo tail.
    virtual bool canRedo() const;

    /// Sets the cursor to the end: every command then counts as undone, without being reverted.
    virtual void initialize();

    /// Called after each change of the cursor, so that a derived class can refresh its menus. Does nothing
    /// here.
    virtual void setMenuStrings();

    /// Releases every command, oldest first. Cursor and saved mark are then at no position: call initialize()
    /// next.
    virtual void clearCommands();

    /// Returns whether the cursor is elsewhere than at the last markAsSaved(). An empty history is never
    /// dirty; a history whose commands are all undone always is.
    virtual bool isDirty() const;

    /// Returns a handle on the command at the cursor; one without a body if the cursor is at the end.
    Command getCurrentCommand();

    /// Returns a handle on the command that redo() would run, so that a menu can show its name; one without a
    /// body if there is no redo tail.
    Command getRedoCommand() const;

    /// Returns the maximum passed to the constructor; -1 means no limit.
    int getMaxCommands() const;

    /// Sets the saved mark to the cursor.
    void markAsSaved();

    /// Returns whether undo and redo have led back to the state of the last noteModified(false), or of the beginning, and
    /// nothing but stored commands has changed the document since. In contrast to isDirty() this also holds with all
    /// commands undone. False while a command runs. A shell calls Document::modify(false) if this is true.
    bool isAtUnmodifiedState() const;

    /// Called by Document::modify(). With @p modified false, the present state is the unmodified one. With true, remembers a
    /// change that no stored command makes, because undo cannot revert it.
    void noteModified(bool modified);

    /// Returns the key sequence for undo, for a menu to show; "Ctrl+Z" unless set.
    const vfBase::VfString& getUndoAccelerator() const;

    /// Returns the key sequence for redo, for a menu to show; "Ctrl+Y" unless set.
    const vfBase::VfString& getRedoAccelerator() const;

    /// Sets the key sequence for undo. This library stores it only.
    void setUndoAccelerator(const vfBase::VfString& accelerator);

    /// Sets the key sequence for redo. This library stores it only.
    void setRedoAccelerator(const vfBase::VfString& accelerator);

    /// Returns "vfApplication::CommandProcessor".
    static const char* classId();

protected:
    /// Runs @p command with the argument stored in its body. Called by submit and redo.
    /// @return what the command returned
    virtual bool doCommand(Command& command);

    /// Reverts @p command with the argument stored in its body. Called by undo.
    /// @return what the command returned
    virtual bool undoCommand(Command& command);

private:
    CommandProcessorPrivate* d;
};

} // namespace vfApplication
