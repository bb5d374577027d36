// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>
#include <velaforge/commands/Command.h>

namespace vfApplication {

class CommandProcessorPrivate;

/// The undo and redo history of one document.
///
///     processor.submit(command, true);  // runs it and, when it succeeds, keeps it
///     processor.undo();
///     processor.redo();
///     processor.markAsSaved();
///     processor.isDirty();              // false
///
/// A cursor stands on the command done last, or at the end when none is done. Storing drops what was undone
/// and, at the maximum, the oldest command. A command that cannot undo is stored like any other, and blocks
/// every undo below it. After an outside call of clearCommands the cursor stands nowhere, and initialize()
/// must come before anything that asks for it.
///
/// An ordinary object: a copy shares the history with its source, and only one of the two may be destroyed.
class VFAPPLICATION_EXPORT CommandProcessor : public vfBase::VfObject
{
public:
    static const vfBase::ClassInfo s_classInfo;

    /// @param maximum  most commands to keep, -1 for no limit
    CommandProcessor(int maximum = -1);
    CommandProcessor(const CommandProcessor& other);
    CommandProcessor& operator=(const CommandProcessor& other);

    // In the order of their slots, which is part of the binary interface. Each calls the others through
    // these slots, so that a derived class sees the calls.
    const vfBase::ClassInfo* getClassInfo() const override;
    ~CommandProcessor() override;

    /// Runs @p command, which must have a body, and keeps it if @p storeIt.
    /// @return what the command returned; false leaves everything as it was
    virtual bool submit(Command command, bool storeIt);

    /// Keeps @p command as the one done last, without running it.
    virtual void store(Command command);

    /// Reverts the command at the cursor. @return false when there is none, it cannot undo, or it failed
    virtual bool undo();

    /// Runs the command behind the cursor again. @return false when there is none or it failed
    virtual bool redo();

    virtual bool canUndo() const;
    virtual bool canRedo() const;

    /// Sets the cursor to the end: every command counts as undone, none is undone by it.
    virtual void initialize();

    /// Called after each change of the cursor, for a derived class to refresh its menus. Does nothing here.
    virtual void setMenuStrings();

    /// Lets go of every command, oldest first; cursor and saved mark then stand nowhere.
    virtual void clearCommands();

    /// @return whether the history stands elsewhere than at the last markAsSaved(). An empty history is clean;
    ///         one with every command undone is dirty.
    virtual bool isDirty() const;

    /// @return a handle on the command at the cursor, one without a body when the cursor is at the end
    Command getCurrentCommand();

    /// @return a handle on the command that redo() would run, one without a body when there is none; so that a menu can
    ///         name it
    Command getRedoCommand() const;

    int getMaxCommands() const;

    /// Sets the saved mark to the cursor.
    void markAsSaved();

    const vfBase::VfString& getUndoAccelerator() const;
    const vfBase::VfString& getRedoAccelerator() const;
    void setUndoAccelerator(const vfBase::VfString& accelerator);
    void setRedoAccelerator(const vfBase::VfString& accelerator);

    /// @return "vfApplication::CommandProcessor"
    static const char* classId();

protected:
    /// Runs the command with its own argument.
    virtual bool doCommand(Command& command);

    /// Reverts the command with its own argument.
    virtual bool undoCommand(Command& command);

private:
    CommandProcessorPrivate* d;
};

} // namespace vfApplication
