// SPDX-License-Identifier: MIT
#include "Outline.h"

#include <velaforge/application/Application.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

using vfApplication::CommandItem;
using vfApplication::DockWindow;

void NotebookMenus::setupMenus(CommandItem* root)
{
    MinimalUiSetup::setupMenus(root); // "&File" with open and exit
    root->find("&File") << "notebook::Save";
    CommandItem edit(root);
    edit.setCommand("&Edit", nullptr);
    edit << "notebook::AddLine"
         << "notebook::Undo";
}

namespace {

const char* const outlineId = "notebook::OutlineWindow"; // its pointer is the key: keep it in one place

class OutlineWindow : public DockWindow
{
public:
    OutlineWindow() : DockWindow(outlineId)
    {
        setTitle("Outline", nullptr);
        setArea(LeftDockArea);
    }
};

class OutlineProducer : public vfApplication::DockWindowRegistryPrivate::Producer
{
public:
    const char* getKey() override { return outlineId; }
    DockWindow* create() override { return new OutlineWindow; }
};

const vfApplication::DockWindowRegistryPrivate::Proxy outline(new OutlineProducer);

} // namespace

OutlineModule::OutlineModule(const vfApplication::UiSetup& menus) : Module(menus)
{
    // The producer makes the window and says how it stands; the other arguments are for windows without a producer.
    vfApplication::Application::instance(false)->getDockWindowManager().addNewOrGetExistingDockWindow(
        outlineId, DockWindow::LeftDockArea, true, false, 0, nullptr);
}
