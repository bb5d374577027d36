// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessDockWindowProducer.h>

#include <velaforge/application/Application.h>
#include <velaforge/dockwindows/DockWindowManager.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/headless/HeadlessDockWindowManager.h>

#include <algorithm>

namespace vfApplication {

namespace {

struct ManagerProducer : DockWindowManagerProducer
{
    DockWindowManagerInterface* create(DockWindowManager*) override { return new HeadlessDockWindowManager; }
};

} // namespace

HeadlessDockWindowProducer::~HeadlessDockWindowProducer() = default;

void HeadlessDockWindowProducer::install()
{
    static HeadlessDockWindowProducer windows;
    static ManagerProducer managers;
    DockWindowProducer::Realizer = &windows;
    DockWindowManagerProducer::Realizer = &managers;
}

std::vector<HeadlessDockWindowProducer::Made>& HeadlessDockWindowProducer::made()
{
    // Never destroyed: modules may destroy their windows when the process ends.
    static auto& all = *new std::vector<Made>;
    return all;
}

DockWindowInterface* HeadlessDockWindowProducer::create(DockWindow* dockWindow)
{
    const auto isGone = [](const Made& one) { return !one.body.valid(); };
    made().erase(std::remove_if(made().begin(), made().end(), isGone), made().end());
    made().push_back({dockWindow->getDockWindowPrivate(), std::make_unique<HeadlessDockWindow>()});
    return made().back().half.get();
}

std::vector<DockWindow*> HeadlessDockWindowProducer::windows()
{
    std::vector<DockWindow*> there;
    for (const Made& one : made()) {
        if (one.body.valid() && one.body->dockWindow)
            there.push_back(one.body->dockWindow);
    }
    return there;
}

void HeadlessDockWindowProducer::restoreStates()
{
    using Settings = DockWindowManagerSettings;
    const Settings& settings = *Settings::instance(false);
    for (DockWindow* window : windows()) {
        const auto known = settings.getDockWindowList().find(window->getId());
        if (known == settings.getDockWindowList().end())
            continue;
        window->setVisible(known->second.visible);
        window->setAutoHide(known->second.autoHide);
        window->setArea(known->second.area);
    }
}

void HeadlessDockWindowProducer::saveStates()
{
    Application* application = Application::instance(false);
    if (!application)
        return;
    DockWindowManager& manager = application->getDockWindowManager();
    for (const Made& one : made()) {
        if (one.body.valid() && !one.body->dockWindow && !manager.findDockWindow(one.body->id.c_str()))
            manager.removeDockWindow(one.body->id.c_str());
    }
    manager.saveDockWindowsState();
}

} // namespace vfApplication
