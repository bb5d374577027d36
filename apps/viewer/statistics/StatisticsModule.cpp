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

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/TriangleIndexFunctor>

#include <iostream>
#include <locale>
#include <sstream>

namespace {

using vfApplication::CommandItem;
using vfApplication::DockWindow;

struct TriangleCounter
{
    void operator()(unsigned int, unsigned int, unsigned int) { ++triangles; }
    unsigned long long triangles = 0;
};

/// Counts what is drawn, each place where it hangs.
class Count : public osg::NodeVisitor
{
public:
    Count() : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Drawable& drawable) override
    {
        osg::TriangleIndexFunctor<TriangleCounter> counter;
        drawable.accept(counter);
        triangles += counter.triangles;
        const osg::Geometry* geometry = drawable.asGeometry();
        if (geometry && geometry->getVertexArray())
            vertices += geometry->getVertexArray()->getNumElements();
        ++drawables;
    }

    unsigned long long triangles = 0;
    unsigned long long vertices = 0;
    unsigned long long drawables = 0;
};

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
        Count count;
        target->accept(count);
        osg::ComputeBoundsVisitor bounds;
        target->accept(bounds);
        const osg::BoundingBox& box = bounds.getBoundingBox();
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << document.getTitle() << ": " << count.triangles << " triangles and " << count.vertices
             << " vertices in " << count.drawables << (count.drawables == 1 ? " drawable" : " drawables");
        if (box.valid())
            text << "; " << box.xMax() - box.xMin() << " wide, " << box.yMax() - box.yMin() << " deep, "
                 << box.zMax() - box.zMin() << " high";
        std::cout << vfBase::printable(text.str()) << std::endl;
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
        setTitle("Statistics", nullptr);
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
