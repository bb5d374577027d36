// SPDX-License-Identifier: MIT
// A module in a library of its own: what a model consists of, in numbers.
#include "model/ModelDocument.h"
#include "model/NamedCommands.h"
#include "ui/Menus.h"

#include <velaforge/application/Application.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/Printable.h>
#include <velaforge/commands/CommandItem.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>
#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>
#include <velaforge/scene/ModelStatistics.h>

#include <iostream>

namespace {

using vfApplication::CommandItem;
using vfApplication::DockWindow;

/// Writes the numbers of the model, or of the part that is selected, to standard output.
struct PrintStatistics : vfViewer::DirectCommand
{
    bool carryOut(vfViewer::ModelDocument& document, const vfBase::VfVariant&) override
    {
        osg::Node* target = document.target();
        if (!target) {
            document.reportFailure("the model is empty");
            return false;
        }
        std::cout << vfBase::printable(document.getTitle().str() + ": " +
                                       describe(vfScene::countModel(*target)))
                  << std::endl;
        return true;
    }
};

const vfBase::ClassInfo printStatistics("vfViewer", "PrintStatistics", "vfViewer::PrintStatistics",
                                        &vfApplication::CommandPrivate::s_classInfo, nullptr,
                                        sizeof(PrintStatistics),
                                        []() -> vfBase::VfObject* { return new PrintStatistics; });

const char* const windowId = "vfViewer::Statistics";

struct StatisticsWindow : DockWindow
{
    StatisticsWindow() : DockWindow(windowId)
    {
        setTitle("Statistics", vfViewer::translationContext);
        setArea(RightDockArea);
        setVisible(false);
    }
};

struct StatisticsWindowProducer : vfApplication::DockWindowRegistryPrivate::Producer
{
    const char* getKey() override { return windowId; }
    DockWindow* create() override { return new StatisticsWindow; }
};

const vfApplication::DockWindowRegistryPrivate::Proxy statisticsWindow(new StatisticsWindowProducer);

struct StatisticsUiSetup : vfApplication::MinimalUiSetup
{
    void setupMenus(CommandItem* root) override
    {
        vfViewer::findOrAddMenu(root, "&Tools") << "vfViewer::PrintStatistics";
    }
    void setupToolbars(CommandItem*) override {}
};

struct StatisticsModule : vfApplication::Module
{
    explicit StatisticsModule(const vfApplication::UiSetup& setup) : Module(setup) {}
    const char* getId() const override { return "vfViewer::Statistics"; }
    const char* getModuleName() const override { return "Statistics"; }
    const char* getModuleDescription() const override { return "Tells what a model consists of"; }
};

} // namespace

extern "C" __attribute__((visibility("default"))) vfApplication::Module* vfViewerCreateModule()
{
    static StatisticsUiSetup setup;
    vfApplication::Application::instance(false)->getDockWindowManager().addNewOrGetExistingDockWindow(
        windowId, DockWindow::RightDockArea, true, false, 0, nullptr);
    return new StatisticsModule(setup);
}
