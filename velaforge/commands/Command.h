// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>
#include <velaforge/base/VfVariant.h>

#include <string>
#include <utility>

namespace vfApplication {

class CommandPrivate;

/// A named, undoable unit of work: a cheap handle on a CommandPrivate.
///
///     vfApplication::Command hide = vfApplication::Command::getCommandByName("vfViewer::Hide");
///     if (hide.isValid())
///         hide.invoke("mast");  // runs it through the history of the active document
///
/// Copies share the body. On a handle without a body only isValid, assignment, comparison and the class names
/// may be used; the other operations do not test for one.
class VFAPPLICATION_EXPORT Command : public vfBase::Referenced
{
public:
    using Properties = vfBase::Map<vfBase::VfString, vfBase::VfVariant>;

    static const vfBase::ClassInfo s_classInfo;

    /// A handle without a body.
    Command() : d(nullptr) {}

    /// A handle on @p body, which may be null.
    Command(CommandPrivate* body);

    /// A handle on the other's body if that is a CommandPrivate, otherwise one without a body.
    Command(const vfBase::Referenced& other);

    Command(const Command& other) = default;

    /// Takes the body over and leaves @p other without one.
    Command(Command&& other) noexcept : vfBase::Referenced(other.vfBase::Referenced::takeImp()), d(other.d)
    {
        other.d = nullptr;
    }

    Command& operator=(const Command& other);

    /// @return true for the same body; an equal name is not enough
    bool operator==(Command other) const { return d == other.d; }
    bool operator!=(Command other) const { return d != other.d; }

    const vfBase::ClassInfo* getClassInfo() const override;
    void setImp(const vfBase::Referenced& other) override;

    // In the order of their slots, which is part of the binary interface.

    /// Hands the command to the history of the active document, see CommandPrivate::invoke.
    virtual void invoke(const vfBase::VfVariant& argument);

    /// The same with an empty argument, which replaces the one kept in the body.
    virtual void invoke();

    virtual bool canUndo() const;

    /// Runs the command with the argument kept in the body, past any history.
    virtual bool Do();

    /// Runs the command with @p argument, which the body does not keep.
    virtual bool Do(const vfBase::VfVariant& argument);

    /// Reverts the command with the argument kept in the body, past any history.
    virtual bool undo();
    virtual bool undo(const vfBase::VfVariant& argument);

    CommandPrivate* operator->() const { return d; }
    CommandPrivate* getImp() const { return d; }

    /// @return the name of the body; valid until it changes
    const char* getName() const;

    /// @param name  must not be null
    void setName(const char* name);

    /// @return a handle on the body's own map: what is written to it, the command has
    Properties getProperties() const;

    /// Copies the entries into the body's map, replacing what it held.
    void setProperties(const Properties& properties);

    /// @return class name and class id of the handle's class, whatever the body's class is
    const char* getClassName() const;
    vfBase::VfString getId() const;

    /// @return "vfApplication::Command"
    static const char* classId();

    /// Makes a new command of the class registered under @p name.
    /// @return a handle without a body when the name is unknown or that class is no command
    static Command getCommandByName(const std::string& name);

    /// @return the shared command without a body; callers copy it and never write to it
    static Command& invalid();

private:
    friend class CommandProcessor; // which keeps bodies, and takes them over from handles

    osg::ref_ptr<osg::Referenced> takeImp()
    {
        d = nullptr;
        return vfBase::Referenced::takeImp();
    }

    CommandPrivate* d;
};

} // namespace vfApplication
