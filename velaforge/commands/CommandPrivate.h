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

/// Body of a command: derive from it, override Do and, where it can be reverted, canUndo and undo.
///
///     class Hide : public vfApplication::CommandPrivate
///     {
///     public:
///         bool canUndo() const override { return true; }
///         bool Do(const vfBase::VfVariant& node) override;
///         bool undo(const vfBase::VfVariant& node) override;
///     };
///
/// With a class record of its own it can be made by name, see Command::getCommandByName. A body belongs to no
/// document: it may stand in the history of several. One that overrides nothing can neither do nor undo.
class VFAPPLICATION_EXPORT CommandPrivate : public osg::Referenced, public vfBase::VfObject
{
public:
    using Properties = vfBase::Map<vfBase::VfString, vfBase::VfVariant>;

    static const vfBase::ClassInfo s_classInfo;

    CommandPrivate();

    /// Copies name and argument, and shares the properties with the source.
    CommandPrivate(const CommandPrivate& other);
    CommandPrivate(CommandPrivate&& other);

    /// Copies name and argument, and the entries of the properties into this command's own map.
    CommandPrivate& operator=(const CommandPrivate& other);
    CommandPrivate& operator=(CommandPrivate&& other);

    /// The virtual operations stand in the order of their slots, which is part of the binary interface;
    /// getClassInfo comes last because its override takes a slot here as well.

    /// Keeps @p argument and hands this command to the history of the active document, which runs it.
    /// Without an active document it is kept only. Nobody learns here whether the command failed.
    virtual void invoke(const vfBase::VfVariant& argument);

    /// @return false here: a command that can be undone says so
    virtual bool canUndo() const;

    /// Runs the command. @return true when it did its work; false leaves the history as it was. False here.
    virtual bool Do(const vfBase::VfVariant& argument);

    /// Reverts the command. @return true when it did; false leaves the history as it was. False here.
    virtual bool undo(const vfBase::VfVariant& argument);

    const vfBase::ClassInfo* getClassInfo() const override;

    /// Do and undo with the argument of the last invoke.
    bool Do();
    bool undo();

    /// What the menu entry for undoing shows; empty unless set.
    /// @return the text, valid until the name changes
    const std::string& getName() const { return m_name.str(); }
    void setName(const std::string& name) { m_name = CommandName(name); }

    /// @return the argument of the last invoke, empty before
    const vfBase::VfVariant& getArgument() const;

    /// @return a handle on this command's own map
    Properties getProperties() const;

    /// Copies the entries into this command's own map, replacing what it held.
    void setProperties(const Properties& properties);

    /// @return "vfApplication::CommandPrivate"
    static const char* classId();

protected:
    ~CommandPrivate() override;

    /// Keeps the argument that Do() and undo() pass on.
    void setArgument(const vfBase::VfVariant& argument);

private:
    struct Extras;

    Extras& extras() const;

    CommandName m_name;

    // Argument and properties, made when they are first asked for: most commands have neither, and histories grow long.
    mutable std::unique_ptr<Extras> m_extras;
};

} // namespace vfApplication
