// SPDX-License-Identifier: MIT
// The commands that menus, toolbars and "--invoke" know by name.
#include "model/NamedCommands.h"

#include "model/ModelDocument.h"
#include "model/ModelView.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace vfViewer {

using vfApplication::Application;
using vfBase::VfString;
using vfBase::VfVariant;
using Edits = std::vector<osg::ref_ptr<SceneCommand>>;

ModelDocument* activeModel()
{
    const Application* application = Application::instance(false);
    return application ? dynamic_cast<ModelDocument*>(application->getActiveDocument()) : nullptr;
}

DirectCommand::DirectCommand()
{
    getProperties()["enabled"] = VfVariant(activeModel() != nullptr);
}

void DirectCommand::invoke(const VfVariant& argument)
{
    setArgument(argument);
    Do(argument);
}

bool DirectCommand::Do(const VfVariant& argument)
{
    ModelDocument* document = activeModel();
    return document && carryOut(*document, argument);
}

bool NamedEdit::Do(const VfVariant& argument)
{
    if (m_edits.empty()) {
        const ModelDocument* document = activeModel();
        if (document)
            m_edits = makeEdits(*document, argument);
        if (m_edits.empty())
            return false;
    }
    for (auto edit = m_edits.begin(); edit != m_edits.end(); ++edit) {
        if ((*edit)->Do(argument))
            continue;
        while (edit != m_edits.begin())
            (*--edit)->undo(argument);
        return false;
    }
    return true;
}

bool NamedEdit::undo(const VfVariant& argument)
{
    return std::all_of(m_edits.rbegin(), m_edits.rend(),
                       [&argument](const auto& edit) { return edit->undo(argument); });
}

ModelView* currentModelView(const ModelDocument& document)
{
    auto* shown = dynamic_cast<ModelView*>(Application::instance(false)->getDocManager().getCurrentView());
    if (!shown)
        failed(document, "this view shows no model");
    return shown;
}

bool failed(const ModelDocument& document, const std::string& reason)
{
    document.reportFailure(reason);
    return false;
}

std::vector<double> readNumbers(const std::string& text)
{
    std::vector<double> read;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    for (double number = 0; stream >> number;) {
        if (!std::isfinite(number))
            return {};
        read.push_back(number);
        char separator = 0;
        if (!(stream >> separator))
            return read;
        if (separator != ',')
            break;
    }
    return {};
}

namespace {

// --- files

struct Save : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return document.save().success(); }
};

struct SaveAs : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const VfString path = argument.toString();
        if (path.empty())
            return failed(document,
                          "to save it under another name, that name is needed: vfViewer::SaveAs=<file>");
        return document.onSaveDocument(path, vfBase::Options::invalid()).success();
    }
};

struct Revert : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return document.revert(); }
};

struct Close : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        return Application::instance(false)->closeDocument(&document);
    }
};

// --- history

struct Undo : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        return document.getCommandProcessor()->undo() || failed(document, "there is nothing to undo");
    }
};

struct Redo : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        return document.getCommandProcessor()->redo() || failed(document, "there is nothing to redo");
    }
};

// --- selection

/// Moves the selection through the parts, round and round.
bool selectNext(ModelDocument& document, bool forward)
{
    const auto parts = document.getModelScene().parts();
    if (parts.empty())
        return failed(document, "there is nothing to select");
    const auto selected = std::find(parts.begin(), parts.end(), document.getSelection());
    const auto count = static_cast<std::ptrdiff_t>(parts.size());
    std::ptrdiff_t next = forward ? 0 : count - 1;
    if (selected != parts.end())
        next = (selected - parts.begin() + (forward ? 1 : count - 1)) % count;
    document.setSelection(parts[static_cast<std::size_t>(next)]);
    return true;
}

struct SelectNext : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return selectNext(document, true); }
};

struct SelectPrevious : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return selectNext(document, false); }
};

struct SelectNothing : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        document.setSelection(nullptr);
        return true;
    }
};

// --- changes

/// A change of the target.
struct TargetEdit : NamedEdit
{
    Edits makeEdits(const ModelDocument& document, const VfVariant& argument) override
    {
        osg::Node* node = document.target();
        SceneCommand* edit = node ? makeEdit(document, *node, argument) : nullptr;
        if (edit)
            return {edit};
        if (!node)
            failed(document, "the model is empty");
        return {};
    }

    virtual SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                   const VfVariant& argument) = 0;
};

struct Hide : TargetEdit
{
    Hide() { setName("Hide"); }
    SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new ShowCommand(document.getModelScene(), node, false);
    }
};

struct Show : TargetEdit
{
    Show() { setName("Show"); }
    SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new ShowCommand(document.getModelScene(), node, true);
    }
};

struct ShowAll : NamedEdit
{
    ShowAll() { setName("Show all"); }
    Edits makeEdits(const ModelDocument& document, const VfVariant&) override
    {
        Edits edits;
        for (const osg::ref_ptr<osg::Node>& node : document.getModelScene().hiddenNodes())
            edits.emplace_back(new ShowCommand(document.getModelScene(), *node, true));
        if (edits.empty())
            failed(document, "nothing is hidden");
        return edits;
    }
};

struct Remove : TargetEdit
{
    Remove() { setName("Remove"); }
    SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new RemoveCommand(document.getModelScene(), node);
    }
};

struct Move : TargetEdit
{
    Move()
    {
        setName("Move");
        getProperties()["prompt"] = VfVariant("By how much along x, y and z:");
        getProperties()["promptValue"] = VfVariant("0,0,0");
    }
    SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant& argument) override
    {
        const std::vector<double> offset = readNumbers(argument.toString().str());
        if (offset.size() == 3)
            return new MoveCommand(document.getModelScene(), node, {offset[0], offset[1], offset[2]});
        failed(document, "to move it, an offset is needed: vfViewer::Move=<x>,<y>,<z>");
        return nullptr;
    }
};

struct SetColor : TargetEdit
{
    SetColor()
    {
        setName("Set colour");
        getProperties()["prompt"] = VfVariant("Colour");
        getProperties()["promptKind"] = VfVariant("color");
    }
    SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant& argument) override
    {
        std::vector<double> color = readNumbers(argument.toString().str());
        if (color.size() == 3)
            color.push_back(1);
        const bool isColor = color.size() == 4 && std::all_of(color.begin(), color.end(), [](double part) {
                                 return part >= 0 && part <= 1;
                             });
        if (isColor)
            return new ColorCommand(document.getModelScene(), node,
                                    osg::Vec4d(color[0], color[1], color[2], color[3]));
        failed(
            document,
            "to colour it, parts from 0 to 1 are needed: vfViewer::SetColor=<red>,<green>,<blue>[,<alpha>]");
        return nullptr;
    }
};

const CommandRecord<Save> save("Save", "vfViewer::Save");
const CommandRecord<SaveAs> saveAs("SaveAs", "vfViewer::SaveAs");
const CommandRecord<Revert> revert("Revert", "vfViewer::Revert");
const CommandRecord<Close> close("Close", "vfViewer::Close");
const CommandRecord<Undo> undo("Undo", "vfViewer::Undo");
const CommandRecord<Redo> redo("Redo", "vfViewer::Redo");
const CommandRecord<SelectNext> next("SelectNext", "vfViewer::SelectNext");
const CommandRecord<SelectPrevious> previous("SelectPrevious", "vfViewer::SelectPrevious");
const CommandRecord<SelectNothing> nothing("SelectNothing", "vfViewer::SelectNothing");
const CommandRecord<Hide> hide("Hide", "vfViewer::Hide");
const CommandRecord<Show> show("Show", "vfViewer::Show");
const CommandRecord<ShowAll> showAll("ShowAll", "vfViewer::ShowAll");
const CommandRecord<Remove> removeRecord("Remove", "vfViewer::Remove");
const CommandRecord<Move> moveRecord("Move", "vfViewer::Move");
const CommandRecord<SetColor> setColor("SetColor", "vfViewer::SetColor");

} // namespace

} // namespace vfViewer
