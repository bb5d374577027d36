// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/scene/SceneCommands.h>

#include <string>
#include <vector>

namespace vfViewer {

class ModelDocument;
class ModelView;

/// @return the active document if it is a model, null otherwise
ModelDocument* activeModel();

/// A command that changes nothing of the model and so stays out of the history: it is carried out at once. What fails is
/// told by the command itself, which has the property "failed" then.
class DirectCommand : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;

    /// Says in its property "enabled" whether there is a model.
    DirectCommand();

    void invoke(const vfBase::VfVariant& argument) override;
    bool Do(const vfBase::VfVariant& argument) override;

protected:
    ~DirectCommand() override = default;

    virtual bool carryOut(ModelDocument& document, const vfBase::VfVariant& argument) = 0;
};

/// A command for scripts and the command line: a window has one of its own for it, or nowhere to print.
class ScriptCommand : public DirectCommand
{
public:
    /// Says in its property "scriptOnly" that no window offers it.
    ScriptCommand() { getProperties()["scriptOnly"] = vfBase::VfVariant(true); }
};

/// A change of the model that is made by name: of the part that is selected, or of the whole model.
class NamedEdit : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;

    /// @return false when the history had to forget it
    bool canUndo() const override;

    /// Decides at the first time what is changed; later times change the same.
    bool Do(const vfBase::VfVariant& argument) override;
    bool undo(const vfBase::VfVariant& argument) override;

protected:
    ~NamedEdit() override = default;

    /// @return the changes, made one after the other; none when that is not possible, which is told here
    virtual std::vector<osg::ref_ptr<vfScene::SceneCommand>> makeEdits(const ModelDocument& document,
                                                                       const vfBase::VfVariant& argument) = 0;

private:
    std::vector<osg::ref_ptr<vfScene::SceneCommand>> m_edits;
};

/// @return the view of the active document that is looked at; null with the failure told when it shows no model
ModelView* currentModelView(const ModelDocument& document);

/// Tells the user. @return false
bool failed(const ModelDocument& document, const std::string& reason);

/// For menus: has a command shown as one that is on or off, and says which.
void showChecked(vfApplication::CommandPrivate& command, bool isChecked);

/// @return the numbers of a text, separated by commas; none if it holds anything else
std::vector<double> readNumbers(const std::string& text);

/// The record of a command class, by which it is found.
template <class Command>
struct CommandRecord : vfBase::ClassInfo
{
    CommandRecord(const char* className, const char* classId)
        : ClassInfo("vfViewer", className, classId, &vfApplication::CommandPrivate::s_classInfo, nullptr,
                    static_cast<int>(sizeof(Command)), []() -> vfBase::VfObject* { return new Command; })
    {}
};

} // namespace vfViewer
