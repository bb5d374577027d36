// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/VfObject.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/CommandName.h>

#include <osg/Referenced>

#include <memory>
#include <string>

namespace vfApplication {

/// The class to derive commands from: override Do and, if the command can be reverted, canUndo and undo.
/// Command is the handle on it.
///
///     class Hide : public vfApplication::CommandPrivate
///     {
///     public:
///         bool canUndo() const override { return true; }
///         bool Do(const vfBase::VfVariant& node) override;
///         bool undo(const vfBase::VfVariant& node) override;
///     };
///
/// A class with a class record of its own can be made by name, see Command::getCommandByName. A body belongs
/// to no document: the undo histories of several documents may hold it. Do and undo of a class that overrides
/// nothing fail. Bodies are reference counted; handles and undo histories hold references.
class VFAPPLICATION_EXPORT CommandPrivate : public osg::Referenced, public vfBase::VfObject
{
public:
    /// Free values of a command, by key.
    using Properties = vfBase::Map<vfBase::VfString, vfBase::VfVariant>;

    /// The class record, with a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a command with an empty name, no argument and no properties.
    CommandPrivate();

    /// Copies name and argument, and shares the properties with @p other.
    CommandPrivate(const CommandPrivate& other);

    /// Copies name and argument, and shares the properties with @p other, which keeps all three.
    CommandPrivate(CommandPrivate&& other);

    /// Copies name and argument, and replaces the entries of this command's own map by copies of those of @p
    /// other.
    CommandPrivate& operator=(const CommandPrivate& other);

    /// Does the same; @p other keeps name, argument and properties.
    CommandPrivate& operator=(CommandPrivate&& other);

    // In the order of their slots, which is part of the binary interface; getClassInfo comes last because its
    // override takes a slot here as well.

    /// Stores @p argument and submits this command to the undo history of the active document, which runs it
    /// and stores it if it succeeded. Without an active document the argument is stored and the command is
    /// not run. Does not report whether the command failed.
    virtual void invoke(const vfBase::VfVariant& argument);

    /// Returns whether the command can be undone; false here. A command that returns false blocks the undoing
    /// of all commands before it.
    virtual bool canUndo() const;

    /// Runs the command with @p argument; does nothing here. Called again to redo the command.
    /// @return true if the command succeeded; false, as here, leaves the undo history unchanged
    virtual bool Do(const vfBase::VfVariant& argument);

    /// Reverts the command with @p argument; does nothing here.
    /// @return true if the command was reverted; false, as here, leaves the undo history unchanged
    virtual bool undo(const vfBase::VfVariant& argument);

    const vfBase::ClassInfo* getClassInfo() const override;

    /// Calls Do with the argument of the last invoke.
    /// @return the result of that call
    bool Do();

    /// Calls undo with the argument of the last invoke.
    /// @return the result of that call
    bool undo();

    /// Returns the name of the command, which the menu entry for undoing shows; empty unless set. The
    /// reference is valid until the name changes.
    const std::string& getName() const { return m_name.str(); }

    /// Sets the name of the command.
    void setName(const std::string& name) { m_name = CommandName(name); }

    /// Returns the argument of the last invoke; empty before the first.
    const vfBase::VfVariant& getArgument() const;

    /// Returns a handle on this command's own map: changes of the returned map change the command.
    Properties getProperties() const;

    /// Replaces the entries of this command's own map by copies of those of @p properties.
    void setProperties(const Properties& properties);

    /// Returns "vfApplication::CommandPrivate".
    static const char* classId();

protected:
    ~CommandPrivate() override;

    /// Stores the argument that Do() and undo() pass on.
    void setArgument(const vfBase::VfVariant& argument);

private:
    struct Extras;

    Extras& extras() const;

    CommandName m_name;

    // Argument and properties, allocated at first use: most commands have neither, and undo histories hold
    // thousands.
    mutable std::unique_ptr<Extras> m_extras;
};

} // namespace vfApplication
