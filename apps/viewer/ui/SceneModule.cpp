// SPDX-License-Identifier: MIT
#include "ui/SceneModule.h"

#include "ui/Menus.h"

#include <velaforge/application/Application.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

namespace vfViewer {

namespace {

using vfApplication::CommandItem;
using vfApplication::DockWindow;

const char* const treeId = "vfViewer::SceneTree";

/// The scene as a tree. What it shows is the toolkit side's.
struct SceneTree : DockWindow
{
    SceneTree() : DockWindow(treeId)
    {
        setTitle("Scene", translationContext);
        setAllowedDockingAreas(LeftDockArea | RightDockArea);
        setArea(LeftDockArea);
    }
};

struct SceneTreeProducer : vfApplication::DockWindowRegistryPrivate::Producer
{
    const char* getKey() override { return treeId; }
    DockWindow* create() override { return new SceneTree; }
};

const vfApplication::DockWindowRegistryPrivate::Proxy sceneTree(new SceneTreeProducer);

} // namespace

void SceneUiSetup::setupMenus(CommandItem* root)
{
    CommandItem scene = findOrAddMenu(root, "&Scene");
    addItem(scene, "vfViewer::SelectNext", "Select &next part", "Ctrl+Down", "go-down");
    addItem(scene, "vfViewer::SelectPrevious", "Select &previous part", "Ctrl+Up", "go-up");
    addItem(scene, "vfViewer::SelectNothing", "Select n&othing", "Esc", nullptr);
    scene << ""; // a separator
    addItem(scene, "vfViewer::Hide", "&Hide", "H", "hide");
    addItem(scene, "vfViewer::Show", "&Show", "Shift+H", "show");
    addItem(scene, "vfViewer::ShowAll", "Show &all", "Alt+H", "show-all");
    addItem(scene, "vfViewer::Isolate", "&Isolate", "I", nullptr);
    scene << "";
    addItem(scene, "vfViewer::Rename", "R&ename…", "F2", nullptr);
    addItem(scene, "vfViewer::Move", "&Move…", nullptr, "move");
    addItem(scene, "vfViewer::Rotate", "&Turn…", nullptr, nullptr);
    addItem(scene, "vfViewer::Scale", "Sca&le…", nullptr, nullptr);
    addItem(scene, "vfViewer::SetColor", "&Colour…", nullptr, "color");
    addItem(scene, "vfViewer::FlipNormals", "&Flip normals", nullptr, nullptr);
    addItem(scene, "vfViewer::RecomputeNormals", "Recomp&ute normals…", nullptr, nullptr);
    scene << "";
    addItem(scene, "vfViewer::AddFile", "A&dd files…", "Ctrl+Shift+O", nullptr);
    addItem(scene, "vfViewer::MergeOpen", "Mer&ge open models", nullptr, nullptr);
    scene << "";
    addItem(scene, "vfViewer::Remove", "&Remove", "Del", "remove");
}

void SceneUiSetup::setupToolbars(CommandItem* root)
{
    addMenu(root, "Scene") << "vfViewer::Hide"
                           << "vfViewer::ShowAll"
                           << "vfViewer::Remove";
}

SceneModule::SceneModule(const vfApplication::UiSetup& setup) : Module(setup) {}

const char* SceneModule::getId() const
{
    return "vfViewer::Scene";
}

const char* SceneModule::getModuleName() const
{
    return "Scene";
}

const char* SceneModule::getModuleDescription() const
{
    return "Selects, hides, moves, colours and removes the parts of a model";
}

void SceneModule::addDockWindows()
{
    // The producer above knows how the window is to stand.
    vfApplication::Application::instance(false)->getDockWindowManager().addNewOrGetExistingDockWindow(
        treeId, DockWindow::LeftDockArea, true, false, 0, nullptr);
}

} // namespace vfViewer
