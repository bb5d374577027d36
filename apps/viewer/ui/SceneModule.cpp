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

/// A dock window of the module. What it shows is the toolkit side's.
struct Window
{
    const char* id; // its pointer is the key
    const char* title;
    DockWindow::DockArea area;
    bool isVisible;
};

constexpr Window windows[] = {{"vfViewer::SceneTree", "Scene", DockWindow::LeftDockArea, true},
                              {"vfViewer::Properties", "Properties", DockWindow::RightDockArea, false},
                              {"vfViewer::Sections", "Sections", DockWindow::RightDockArea, false},
                              {"vfViewer::Animation", "Animation", DockWindow::RightDockArea, false},
                              {"vfViewer::Measurements", "Measurements", DockWindow::RightDockArea, false},
                              {"vfViewer::Messages", "Messages", DockWindow::RightDockArea, false}};

struct SceneWindow : DockWindow
{
    explicit SceneWindow(const Window& window) : DockWindow(window.id)
    {
        setTitle(window.title, translationContext);
        setAllowedDockingAreas(LeftDockArea | RightDockArea);
        setArea(window.area);
        if (!window.isVisible)
            setVisible(false);
    }
};

template <std::size_t number>
struct Producer : vfApplication::DockWindowRegistryPrivate::Producer
{
    const char* getKey() override { return windows[number].id; }
    DockWindow* create() override { return new SceneWindow(windows[number]); }
};

using vfApplication::DockWindowRegistryPrivate;
const DockWindowRegistryPrivate::Proxy tree(new Producer<0>);
const DockWindowRegistryPrivate::Proxy properties(new Producer<1>);
const DockWindowRegistryPrivate::Proxy sections(new Producer<2>);
const DockWindowRegistryPrivate::Proxy measurements(new Producer<3>);
const DockWindowRegistryPrivate::Proxy messages(new Producer<4>);
const DockWindowRegistryPrivate::Proxy animation(new Producer<5>);

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
    addItem(scene, "vfViewer::ShowAll", "Sho&w all", "Ctrl+H", "show-all");
    addItem(scene, "vfViewer::Isolate", "&Isolate", "I", nullptr);
    scene << "";
    CommandItem hand = addMenu(&scene, "&Drag with the mouse");
    addItem(hand, "vfViewer::ToolSelect", "&Camera only", "S", nullptr);
    addItem(hand, "vfViewer::ToolMove", "&Move", "M", nullptr);
    addItem(hand, "vfViewer::ToolRotate", "&Turn", "R", nullptr);
    addItem(hand, "vfViewer::ToolScale", "&Scale", "K", nullptr);
    addItem(scene, "vfViewer::Rename", "R&ename…", "F2", nullptr);
    addItem(scene, "vfViewer::Move", "&Move…", nullptr, "move");
    addItem(scene, "vfViewer::Rotate", "&Turn…", nullptr, nullptr);
    addItem(scene, "vfViewer::Scale", "Sca&le…", nullptr, nullptr);
    addItem(scene, "vfViewer::SetColor", "&Colour…", nullptr, "color");
    addItem(scene, "vfViewer::FlipNormals", "&Flip normals", nullptr, nullptr);
    addItem(scene, "vfViewer::RecomputeNormals", "Recomp&ute normals…", nullptr, nullptr);
    scene << "";
    addItem(scene, "vfViewer::AddFile", "&Add files…", "Ctrl+Shift+O", nullptr);
    addItem(scene, "vfViewer::MergeOpen", "Mer&ge open models", nullptr, nullptr);
    scene << "";
    addItem(scene, "vfViewer::Remove", "&Remove", "Del", "remove");
    setupInspectMenu(root);
}

void SceneUiSetup::setupInspectMenu(CommandItem* root)
{
    CommandItem tools = findOrAddMenu(root, "&Tools");
    addItem(tools, "vfViewer::MeasureDistance", "Measure &distance", "D", nullptr);
    addItem(tools, "vfViewer::MeasureAngle", "Measure &angle", nullptr, nullptr);
    addItem(tools, "vfViewer::MeasureRadius", "Measure &radius", nullptr, nullptr);
    addItem(tools, "vfViewer::ClearMeasurements", "&Clear measurements", nullptr, nullptr);
    addItem(tools, "vfViewer::Units", "&Units…", nullptr, nullptr);
    tools << "";
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
    // The producers above know how the windows are to stand.
    for (const Window& window : windows)
        vfApplication::Application::instance(false)->getDockWindowManager().addNewOrGetExistingDockWindow(
            window.id, window.area, true, false, 0, nullptr);
}

} // namespace vfViewer
