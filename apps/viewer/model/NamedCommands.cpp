// SPDX-License-Identifier: MIT
// The commands that menus, toolbars and "--invoke" know by name.
#include "model/NamedCommands.h"

#include "model/ModelDocument.h"
#include "model/ModelView.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/StringList.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/View.h>
#include <velaforge/formats/ModelFiles.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

namespace vfViewer {

using vfApplication::Application;
using vfBase::VfString;
using vfBase::VfVariant;
using Edits = std::vector<osg::ref_ptr<vfScene::SceneCommand>>;

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
    getProperties()["failed"] = VfVariant(!Do(argument));
}

bool DirectCommand::Do(const VfVariant& argument)
{
    ModelDocument* document = activeModel();
    return document && carryOut(*document, argument);
}

bool NamedEdit::canUndo() const
{
    return std::all_of(m_edits.begin(), m_edits.end(), [](const auto& edit) { return edit->canUndo(); });
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
    const vfScene::ModelScene::Batch batch(m_edits.front()->scene());
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
    if (m_edits.empty())
        return true;
    const vfScene::ModelScene::Batch batch(m_edits.front()->scene());
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

void showChecked(vfApplication::CommandPrivate& command, bool isChecked)
{
    command.getProperties()["checkable"] = VfVariant(true);
    command.getProperties()["checked"] = VfVariant(isChecked);
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

/// @return one or several paths
std::vector<VfString> readPaths(const VfVariant& argument)
{
    std::vector<VfString> paths;
    const vfBase::StringList several = argument.toStringList();
    for (unsigned int i = 0; i < several.size(); ++i)
        paths.push_back(several.get(i));
    if (paths.empty() && !argument.toString().empty())
        paths.push_back(argument.toString());
    return paths;
}

// --- files

struct Save : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return document.save().success(); }
};

/// Needs no document.
struct Open : vfApplication::CommandPrivate
{
    Open()
    {
        getProperties()["standalone"] = VfVariant(true);
        getProperties()["scriptOnly"] = VfVariant(true);
        getProperties()["prompt"] = VfVariant("Open");
        getProperties()["promptKind"] = VfVariant("files");
    }
    void invoke(const VfVariant& argument) override
    {
        setArgument(argument);
        getProperties()["failed"] = VfVariant(!Do(argument));
    }
    using CommandPrivate::Do;
    bool Do(const VfVariant& argument) override
    {
        const std::vector<VfString> paths = readPaths(argument);
        std::size_t opened = 0;
        for (const VfString& path : paths)
            opened += Application::instance(false)->openDocument(path.c_str(), vfBase::Options()) ? 1 : 0;
        return opened > 0 && opened == paths.size();
    }
};

/// Makes another of the open documents the active one.
struct Activate : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const VfString wanted = argument.toString();
        for (vfApplication::Document* other : document.getDocumentManager()->getDocumentList()) {
            if (other->getFilename() != wanted && other->getTitle() != wanted)
                continue;
            if (vfApplication::View* view = other->getFirstView())
                view->activate(true);
            return true;
        }
        return failed(document,
                      "no open model is called \"" + wanted.str() + "\": vfViewer::Activate=<file>");
    }
};

struct SaveAs : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant& argument) override
    {
        const VfString path = vfBase::absolutePath(argument.toString());
        if (path.empty())
            return failed(document,
                          "to save it under another name, that name is needed: vfViewer::SaveAs=<file>");
        return document.onSaveDocument(path, vfBase::Options::invalid()).success();
    }
};

struct Revert : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override { return document.revert(); }
};

struct Close : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        return Application::instance(false)->closeDocument(&document);
    }
};

// --- history

struct Undo : ScriptCommand
{
    bool carryOut(ModelDocument& document, const VfVariant&) override
    {
        return document.getCommandProcessor()->undo() || failed(document, "there is nothing to undo");
    }
};

struct Redo : ScriptCommand
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
        // Escape ends measuring, too.
        if (auto* view =
                dynamic_cast<ModelView*>(Application::instance(false)->getDocManager().getCurrentView()))
            view->setTool(Tool::Select);
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
        vfScene::SceneCommand* edit = node ? makeEdit(document, *node, argument) : nullptr;
        if (edit)
            return {edit};
        if (!node)
            failed(document, "the model is empty");
        return {};
    }

    virtual vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                            const VfVariant& argument) = 0;
};

/// For menus and keys: disables a command while no part is selected, and says what to do. Scripts are not disabled: without a
/// selection they mean the whole model.
void needSelection(vfApplication::CommandPrivate& command)
{
    const ModelDocument* document = activeModel();
    const bool isSelected = document && document->getSelection();
    command.getProperties()["enabled"] = VfVariant(isSelected);
    if (document && !isSelected)
        command.getProperties()["toolTip"] = VfVariant("Select a part first: click on it");
}

struct Hide : TargetEdit
{
    Hide()
    {
        setName("Hide");
        needSelection(*this);
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new vfScene::ShowCommand(document.getModelScene(), node, false);
    }
};

struct Show : TargetEdit
{
    Show()
    {
        setName("Show");
        needSelection(*this);
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new vfScene::ShowCommand(document.getModelScene(), node, true);
    }
};

struct ShowAll : NamedEdit
{
    ShowAll() { setName("Show all"); }
    Edits makeEdits(const ModelDocument& document, const VfVariant&) override
    {
        Edits edits;
        for (const osg::ref_ptr<osg::Node>& node : document.getModelScene().hiddenNodes())
            edits.emplace_back(new vfScene::ShowCommand(document.getModelScene(), *node, true));
        if (edits.empty())
            failed(document, "nothing is hidden");
        return edits;
    }
};

struct Isolate : NamedEdit
{
    Isolate()
    {
        setName("Isolate");
        needSelection(*this);
    }
    Edits makeEdits(const ModelDocument& document, const VfVariant&) override
    {
        osg::Node* part = document.getSelection();
        if (!part) {
            failed(document, "no part is selected");
            return {};
        }
        Edits edits;
        for (const osg::ref_ptr<osg::Node>& other : document.getModelScene().othersThan(*part))
            edits.emplace_back(new vfScene::ShowCommand(document.getModelScene(), *other, false));
        if (edits.empty())
            failed(document, "there is nothing else to be seen");
        return edits;
    }
};

struct Remove : TargetEdit
{
    Remove()
    {
        setName("Remove");
        needSelection(*this);
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new vfScene::RemoveCommand(document.getModelScene(), node);
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
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        const std::vector<double> offset = readNumbers(argument.toString().str());
        if (offset.size() == 3)
            return new vfScene::TransformCommand("Move", document.getModelScene(), node,
                                                 osg::Matrixd::translate(offset[0], offset[1], offset[2]));
        failed(document, "to move it, an offset is needed: vfViewer::Move=<x>,<y>,<z>");
        return nullptr;
    }
};

struct Rotate : TargetEdit
{
    Rotate()
    {
        setName("Rotate");
        getProperties()["prompt"] = VfVariant("About which axis (x, y and z), and by how many degrees:");
        getProperties()["promptValue"] = VfVariant("0,0,1,90");
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        const std::vector<double> turn = readNumbers(argument.toString().str());
        const osg::Vec3d axis = turn.size() == 4 ? osg::Vec3d(turn[0], turn[1], turn[2]) : osg::Vec3d();
        if (axis.length2() > 0 && std::isfinite(axis.length2())) {
            const osg::Matrixd matrix = osg::Matrixd::rotate(osg::DegreesToRadians(turn[3]), axis);
            return new vfScene::TransformCommand("Rotate", document.getModelScene(), node,
                                                 vfScene::TransformCommand::aboutMiddle(node, matrix));
        }
        failed(document,
               "to turn it, an axis and an angle are needed: vfViewer::Rotate=<x>,<y>,<z>,<degrees>");
        return nullptr;
    }
};

struct Scale : TargetEdit
{
    Scale()
    {
        setName("Scale");
        getProperties()["prompt"] = VfVariant("By which factor, or which factors along x, y and z:");
        getProperties()["promptValue"] = VfVariant("1");
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        std::vector<double> factors = readNumbers(argument.toString().str());
        if (factors.size() == 1)
            factors.assign(3, factors[0]);
        const bool isScale =
            factors.size() == 3 && std::all_of(factors.begin(), factors.end(), [](double factor) {
                return std::fabs(factor) >= 1e-9 && std::fabs(factor) <= 1e9;
            });
        if (isScale) {
            const osg::Matrixd matrix = osg::Matrixd::scale(factors[0], factors[1], factors[2]);
            return new vfScene::TransformCommand("Scale", document.getModelScene(), node,
                                                 vfScene::TransformCommand::aboutMiddle(node, matrix));
        }
        failed(document, "to scale it, a factor is needed that is not 0: vfViewer::Scale=<factor>, or "
                         "vfViewer::Scale=<x>,<y>,<z>");
        return nullptr;
    }
};

struct Rename : TargetEdit
{
    Rename()
    {
        setName("Rename");
        needSelection(*this);
        getProperties()["prompt"] = VfVariant("Name:");
        const ModelDocument* document = activeModel();
        const osg::Node* node = document ? document->target() : nullptr;
        getProperties()["promptValue"] = VfVariant(node ? node->getName() : std::string());
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        const std::string name = argument.toString().str();
        if (!name.empty())
            return new vfScene::RenameCommand(document.getModelScene(), node, name);
        failed(document, "to rename it, a name is needed: vfViewer::Rename=<name>");
        return nullptr;
    }
};

struct FlipNormals : TargetEdit
{
    FlipNormals() { setName("Flip normals"); }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node, const VfVariant&) override
    {
        return new vfScene::FlipNormalsCommand(document.getModelScene(), node);
    }
};

struct RecomputeNormals : TargetEdit
{
    RecomputeNormals()
    {
        setName("Recompute normals");
        getProperties()["prompt"] = VfVariant("Edges where surfaces meet at more than how many degrees:");
        getProperties()["promptValue"] = VfVariant("30");
    }
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        const std::string text = argument.toString().str();
        const std::vector<double> angle = text.empty() ? std::vector<double>{30} : readNumbers(text);
        if (angle.size() == 1 && angle[0] >= 0 && angle[0] <= 180)
            return new vfScene::RecomputeNormalsCommand(document.getModelScene(), node,
                                                        osg::DegreesToRadians(angle[0]));
        failed(document,
               "the angle of an edge lies between 0 and 180 degrees: vfViewer::RecomputeNormals[=<degrees>]");
        return nullptr;
    }
};

struct AddFile : NamedEdit
{
    AddFile()
    {
        setName("Add file");
        getProperties()["enabled"] = VfVariant(activeModel() != nullptr);
        getProperties()["prompt"] = VfVariant("Add files");
        getProperties()["promptKind"] = VfVariant("files");
        getProperties()["promptFilter"] =
            VfVariant(vfFormats::modelFilter() + "," + vfFormats::imageFilter());
    }
    Edits makeEdits(const ModelDocument& document, const VfVariant& argument) override
    {
        const std::vector<VfString> paths = readPaths(argument);
        if (paths.empty()) {
            failed(document, "to add a file, its name is needed: vfViewer::AddFile=<file>");
            return {};
        }
        const auto models = document.readModels(paths);
        if (models.empty())
            return {};
        return {new vfScene::AddCommand("Add file", document.getModelScene(), models)};
    }
};

/// Copies what the other models show, apart from what is large, which is shared.
struct MergeOpen : NamedEdit
{
    MergeOpen() { setName("Merge"); }
    Edits makeEdits(const ModelDocument& document, const VfVariant&) override
    {
        std::vector<osg::ref_ptr<osg::Node>> models;
        for (vfApplication::Document* other : document.getDocumentManager()->getDocumentList()) {
            const auto* model = dynamic_cast<ModelDocument*>(other);
            if (!model || model == &document)
                continue;
            for (unsigned int i = 0; i < model->scene().getNumChildren(); ++i) {
                const osg::CopyOp copy(osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES |
                                       osg::CopyOp::DEEP_COPY_STATESETS);
                models.emplace_back(osg::clone(model->scene().getChild(i), copy));
                if (models.back()->getName().empty())
                    models.back()->setName(model->getTitle().str());
            }
        }
        if (models.empty()) {
            failed(document, "no other model is open");
            return {};
        }
        return {new vfScene::AddCommand("Merge", document.getModelScene(), models)};
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
    vfScene::SceneCommand* makeEdit(const ModelDocument& document, osg::Node& node,
                                    const VfVariant& argument) override
    {
        std::vector<double> color = readNumbers(argument.toString().str());
        if (color.size() == 3)
            color.push_back(1);
        const bool isColor = color.size() == 4 && std::all_of(color.begin(), color.end(), [](double part) {
                                 return part >= 0 && part <= 1;
                             });
        if (isColor)
            return new vfScene::ColorCommand(document.getModelScene(), node,
                                             osg::Vec4d(color[0], color[1], color[2], color[3]));
        failed(
            document,
            "to colour it, parts from 0 to 1 are needed: vfViewer::SetColor=<red>,<green>,<blue>[,<alpha>]");
        return nullptr;
    }
};

const CommandRecord<Open> open("Open", "vfViewer::Open");
const CommandRecord<Activate> activate("Activate", "vfViewer::Activate");
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
const CommandRecord<Isolate> isolate("Isolate", "vfViewer::Isolate");
const CommandRecord<Rotate> rotateRecord("Rotate", "vfViewer::Rotate");
const CommandRecord<Scale> scaleRecord("Scale", "vfViewer::Scale");
const CommandRecord<Rename> renameRecord("Rename", "vfViewer::Rename");
const CommandRecord<FlipNormals> flipNormals("FlipNormals", "vfViewer::FlipNormals");
const CommandRecord<RecomputeNormals> recomputeNormals("RecomputeNormals", "vfViewer::RecomputeNormals");
const CommandRecord<AddFile> addFile("AddFile", "vfViewer::AddFile");
const CommandRecord<MergeOpen> mergeOpen("MergeOpen", "vfViewer::MergeOpen");
const CommandRecord<SetColor> setColor("SetColor", "vfViewer::SetColor");

} // namespace

} // namespace vfViewer
