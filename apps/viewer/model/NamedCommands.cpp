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

namespace {

bool failed(const ModelDocument& document, const char* reason)
{
    document.reportFailure(reason);
    return false;
}

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

// --- the view

/// @return the current view, null with the failure told when it cannot be turned
ModelView* turnableView(const ModelDocument& document)
{
    auto* shown = dynamic_cast<ModelView*>(Application::instance(false)->getDocManager().getCurrentView());
    if (!shown)
        failed(document, "this view cannot be turned");
    return shown;
}

struct Fit : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        ModelView* shown = turnableView(document);
        if (shown)
            shown->fit();
        return shown != nullptr;
    }
};

template <StandardView view>
struct LookFrom : DirectCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        ModelView* shown = turnableView(document);
        if (shown)
            shown->lookFrom(view);
        return shown != nullptr;
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

/// @return the numbers of a text, separated by commas; none if it holds anything else
std::vector<double> numbers(const VfString& text)
{
    std::vector<double> read;
    std::istringstream stream(text.str());
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
        const std::vector<double> offset = numbers(argument.toString());
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
        std::vector<double> color = numbers(argument.toString());
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

/// The record of a command class.
template <class Command>
struct Record : vfBase::ClassInfo
{
    Record(const char* className, const char* classId)
        : ClassInfo("vfViewer", className, classId, &vfApplication::CommandPrivate::s_classInfo, nullptr,
                    static_cast<int>(sizeof(Command)), []() -> vfBase::VfObject* { return new Command; })
    {}
};

const Record<Save> save("Save", "vfViewer::Save");
const Record<SaveAs> saveAs("SaveAs", "vfViewer::SaveAs");
const Record<Revert> revert("Revert", "vfViewer::Revert");
const Record<Close> close("Close", "vfViewer::Close");
const Record<Undo> undo("Undo", "vfViewer::Undo");
const Record<Redo> redo("Redo", "vfViewer::Redo");
const Record<SelectNext> next("SelectNext", "vfViewer::SelectNext");
const Record<SelectPrevious> previous("SelectPrevious", "vfViewer::SelectPrevious");
const Record<SelectNothing> nothing("SelectNothing", "vfViewer::SelectNothing");
const Record<LookFrom<StandardView::Front>> front("ViewFront", "vfViewer::ViewFront");
const Record<LookFrom<StandardView::Back>> back("ViewBack", "vfViewer::ViewBack");
const Record<LookFrom<StandardView::Left>> left("ViewLeft", "vfViewer::ViewLeft");
const Record<LookFrom<StandardView::Right>> right("ViewRight", "vfViewer::ViewRight");
const Record<LookFrom<StandardView::Top>> top("ViewTop", "vfViewer::ViewTop");
const Record<LookFrom<StandardView::Bottom>> bottom("ViewBottom", "vfViewer::ViewBottom");
const Record<LookFrom<StandardView::FrontLeft>> frontLeft("ViewFrontLeft", "vfViewer::ViewFrontLeft");
const Record<LookFrom<StandardView::FrontRight>> frontRight("ViewFrontRight", "vfViewer::ViewFrontRight");
const Record<LookFrom<StandardView::BackRight>> backRight("ViewBackRight", "vfViewer::ViewBackRight");
const Record<LookFrom<StandardView::BackLeft>> backLeft("ViewBackLeft", "vfViewer::ViewBackLeft");
const Record<Fit> fit("Fit", "vfViewer::Fit");
const Record<Hide> hide("Hide", "vfViewer::Hide");
const Record<Show> show("Show", "vfViewer::Show");
const Record<ShowAll> showAll("ShowAll", "vfViewer::ShowAll");
const Record<Remove> removeRecord("Remove", "vfViewer::Remove");
const Record<Move> moveRecord("Move", "vfViewer::Move");
const Record<SetColor> setColor("SetColor", "vfViewer::SetColor");

} // namespace

} // namespace vfViewer
