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
///         hide.invoke("mast");  // runs it through the undo history of the active document
///
/// Copies share the body. To write a command of your own, derive from CommandPrivate. On a handle without a
/// body, call only isValid, assignment, comparison, getClassName and getId: every other operation ends the
/// process with a message.
class VFAPPLICATION_EXPORT Command : public vfBase::Referenced
{
public:
    /// Free values of a command, by key.
    using Properties = vfBase::Map<vfBase::VfString, vfBase::VfVariant>;

    /// The class record, without a creator.
    static const vfBase::ClassInfo s_classInfo;

    /// Makes a handle without a body.
    Command() : d(nullptr) {}

    /// Makes a handle on @p body, which may be null.
    Command(CommandPrivate* body);

    /// Makes a handle on the body of @p other; one without a body if that is no CommandPrivate.
    Command(const vfBase::Referenced& other);

    /// Shares the body of @p other.
    Command(const Command& other) = default;

    /// Takes the body over and leaves @p other without one.
    Command(Command&& other) noexcept : vfBase::Referenced(other.vfBase::Referenced::takeImp()), d(other.d)
    {
        other.d = nullptr;
    }

    /// Shares the body of @p other.
    Command& operator=(const Command& other);

    /// @return true if both handles have the same body; an equal name is not enough
    bool operator==(Command other) const { return d == other.d; }

    /// @return true if the handles have different bodies
    bool operator!=(Command other) const { return d != other.d; }

    const vfBase::ClassInfo* getClassInfo() const override;

    /// Shares the body of @p other; gives the body up if that of @p other is no CommandPrivate.
    void setImp(const vfBase::Referenced& other) override;

    // In the order of their slots, which is part of the binary interface.

    /// Has the active document's undo history run the command with @p argument; see CommandPrivate::invoke.
    virtual void invoke(const vfBase::VfVariant& argument);

    /// Does the same with an empty argument, which replaces the one stored in the body.
    virtual void invoke();

    /// Returns whether the command can be undone.
    virtual bool canUndo() const;

    /// Runs the command with the argument stored in the body, without any undo history.
    /// @return true if the command succeeded
    virtual bool Do();

    /// Runs the command with @p argument, without any undo history. The body does not store the argument.
    /// @return true if the command succeeded
    virtual bool Do(const vfBase::VfVariant& argument);

    /// Reverts the command with the argument stored in the body, without any undo history.
    /// @return true if the command was reverted
    virtual bool undo();

    /// Reverts the command with @p argument, without any undo history. The body does not store the argument.
    /// @return true if the command was reverted
    virtual bool undo(const vfBase::VfVariant& argument);

    /// Gives access to the body, which must not be null.
    CommandPrivate* operator->() const { return d; }

    /// Returns the body, null if there is none. The handle keeps its reference.
    CommandPrivate* getImp() const { return d; }

    /// Returns the name of the body. The pointer is valid until the name changes.
    const char* getName() const;

    /// Sets the name of the body. @p name must not be null.
    void setName(const char* name);

    /// Returns a handle on the body's own map: changes of the returned map change the command.
    Properties getProperties() const;

    /// Replaces the entries of the body's map by copies of those of @p properties.
    void setProperties(const Properties& properties);

    /// Returns the class name of the handle, whatever class the body has: "Command" here.
    const char* getClassName() const;

    /// Returns the class id of the handle, whatever class the body has: "vfApplication::Command" here.
    vfBase::VfString getId() const;

    /// Returns "vfApplication::Command".
    static const char* classId();

    /// Makes a new command of the class registered under @p name, a class name or class id.
    /// @return a handle without a body if no such class is registered or the class is no CommandPrivate
    static Command getCommandByName(const std::string& name);

    /// Returns the shared handle without a body. Callers copy it and must not change it.
    static Command& invalid();

private:
    friend class CommandProcessor; // takes bodies over from handles

    osg::ref_ptr<osg::Referenced> takeImp()
    {
        d = nullptr;
        return vfBase::Referenced::takeImp();
    }

    CommandPrivate* d;
};

} // namespace vfApplication
