// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowManager.h>

#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/dockwindows/DockWindowManagerPrivate.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>

#include <algorithm>
#include <cassert>
#include <memory>
#include <string>

namespace vfApplication {

namespace {

using DockWindows = decltype(DockWindowManagerPrivate::dockWindows);

DockWindowManagerInterface& screen(const DockWindowManagerPrivate* body)
{
    assert(body->dockWindowManagerInterface && "a toolkit side must set DockWindowManagerProducer::Realizer");
    return *body->dockWindowManagerInterface;
}

/// Makes the table the one owner of a new window, which loses its own count of its body.
DockWindow& handOver(DockWindow* dockWindow, DockWindows& table, const vfBase::VfString& id)
{
    DockWindowPrivate* body = dockWindow->getDockWindowPrivate();
    const osg::ref_ptr<DockWindowPrivate> entry(body);
    body->unref_nodelete();
    table[id] = entry;
    return *dockWindow;
}

/// The window of an entry, and it must have one: whoever destroys a window that is in the table takes it out first.
DockWindow& windowOf(const DockWindowPrivate& body)
{
    assert(body.dockWindow && "a window was destroyed while it was in the table");
    return *body.dockWindow;
}

} // namespace

DockWindowManager::DockWindowManager() : DockWindowManager(new DockWindowManagerPrivate(this))
{
    if (DockWindowManagerProducer::Realizer)
        d->dockWindowManagerInterface.reset(DockWindowManagerProducer::Realizer->create(this));
}

DockWindowManager::DockWindowManager(DockWindowManagerPrivate* body) : d(body)
{
    d->ref();
}

DockWindowManager::~DockWindowManager()
{
    if (!d)
        return; // the body went first, and cut us off
    d->dockWindowManager = nullptr;
    d->unref();
    d = nullptr;
}

bool DockWindowManager::addDockWindow(DockWindow* dockWindow)
{
    if (!dockWindow || findDockWindow(dockWindow->getId()))
        return false;
    d->dockWindows[dockWindow->getId()] = dockWindow->getDockWindowPrivate();
    return true;
}

DockWindow& DockWindowManager::addNewDockWindow()
{
    auto* dockWindow = new DockWindow;
    return handOver(dockWindow, d->dockWindows, dockWindow->getId());
}

DockWindow& DockWindowManager::addNewOrGetExistingDockWindow(const char* id, DockWindow::DockArea area,
                                                             bool visible, bool startHidden, int shortcut,
                                                             bool* existed)
{
    DockWindow* found = findDockWindow(id);
    if (existed)
        *existed = found != nullptr;
    if (found)
        return *found;
    if (!id)
        return addNewDockWindow();
    DockWindow* made = DockWindowRegistry::instance(false)->create(id);
    if (!made) {
        auto plain = std::make_unique<DockWindow>(id);
        plain->setVisible(!startHidden && visible);
        plain->setShortcut(shortcut);
        screen(d).dockDockWindowToArea(area, plain.get());
        made = plain.release();
    }
    return handOver(made, d->dockWindows, id);
}

DockWindow* DockWindowManager::findDockWindow(const char* id) const
{
    if (!id)
        return nullptr;
    const auto found = d->dockWindows.asStdMap().find(id);
    return found == d->dockWindows.end() ? nullptr : found->second->dockWindow;
}

unsigned int DockWindowManager::getNumDockWindows() const
{
    return d->dockWindows.size();
}

void DockWindowManager::dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow)
{
    screen(d).dockDockWindowToArea(area, dockWindow);
}

DockWindow::DockArea DockWindowManager::getDockedDockWindowArea(DockWindow* dockWindow) const
{
    return screen(d).getDockedDockWindowArea(dockWindow);
}

bool DockWindowManager::removeDockWindow(DockWindow* dockWindow)
{
    const DockWindowPrivate* body = dockWindow->getDockWindowPrivate();
    const auto found = std::find_if(d->dockWindows.begin(), d->dockWindows.end(),
                                    [body](const auto& entry) { return entry.second == body; });
    if (found == d->dockWindows.end())
        return false;
    // Out of the table first, so that a window may ask the manager while it is destroyed.
    const osg::ref_ptr<DockWindowPrivate> released = found->second;
    d->dockWindows.asStdMap().erase(found);
    return true;
}

bool DockWindowManager::removeDockWindow(const char* id)
{
    if (!id)
        return false;
    const osg::ref_ptr<DockWindowPrivate> released = d->dockWindows.value(id);
    return d->dockWindows.remove(id);
}

bool DockWindowManager::hasNextDockWindow() const
{
    return d->dockWindows.getIterator().hasNext();
}

bool DockWindowManager::hasPreviousDockWindow() const
{
    return d->dockWindows.getIterator().hasPrevious();
}

DockWindow* DockWindowManager::nextDockWindow()
{
    assert(hasNextDockWindow());
    return d->dockWindows.getIterator().next().value->dockWindow;
}

DockWindow* DockWindowManager::previousDockWindow()
{
    return d->dockWindows.getIterator().previous().value->dockWindow;
}

DockWindow* DockWindowManager::peekNextDockWindow() const
{
    return d->dockWindows.getIterator().peekNext().value->dockWindow;
}

DockWindow* DockWindowManager::peekPreviousDockWindow() const
{
    return d->dockWindows.getIterator().peekPrevious().value->dockWindow;
}

void DockWindowManager::toBackDockWindow()
{
    d->dockWindows.getIterator().toBack();
}

void DockWindowManager::toFrontDockWindow()
{
    d->dockWindows.getIterator().toFront();
}

void DockWindowManager::onLanguageChange()
{
    for (const auto& [id, body] : d->dockWindows)
        windowOf(*body).getDockWindowInterface()->onLanguageChange();
}

void DockWindowManager::saveDockWindowsState()
{
    for (const auto& [key, body] : d->dockWindows) {
        const std::string id = key.str();
        const DockWindow& dockWindow = windowOf(*body);
        DockWindowManagerSettings& settings = *DockWindowManagerSettings::instance(false);
        settings.setDockWindowVisibleState(id, dockWindow.getVisible());
        settings.setDockWindowAutoHideState(id, dockWindow.getAutoHide());
        settings.setDockWindowAreaState(id, dockWindow.getArea());
    }
}

DockWindowManagerInterface* DockWindowManager::getDockWindowManagerInterface()
{
    return d->dockWindowManagerInterface.get();
}

DockWindowManagerPrivate::~DockWindowManagerPrivate()
{
    if (!dockWindowManager)
        return;
    dockWindowManager->d = nullptr;
    delete dockWindowManager;
    dockWindowManager = nullptr;
}

DockWindowManagerInterface::~DockWindowManagerInterface() = default;

DockWindowManagerProducer* DockWindowManagerProducer::Realizer = nullptr;

DockWindowManagerProducer::~DockWindowManagerProducer() = default;

} // namespace vfApplication
