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
        setTitle("Scene", nullptr);
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
    findOrAddMenu(root, "&Scene") << "vfViewer::SelectNext"
                                  << "vfViewer::SelectPrevious"
                                  << "vfViewer::SelectNothing"
                                  << "" // a separator
                                  << "vfViewer::Hide"
                                  << "vfViewer::Show"
                                  << "vfViewer::ShowAll"
                                  << ""
                                  << "vfViewer::Move"
                                  << "vfViewer::SetColor"
                                  << "vfViewer::Remove";
}

void SceneUiSetup::setupToolbars(CommandItem* root)
{
    CommandItem scene(root);
    scene.setCommand("Scene", nullptr);
    scene << "vfViewer::Hide"
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
