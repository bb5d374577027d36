// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowManager.h>

#include <velaforge/base/CrosswisePair.h>
#include <velaforge/base/Require.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/dockwindows/DockWindowManagerPrivate.h>
#include <velaforge/dockwindows/DockWindowManagerProducer.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/dockwindows/DockWindowRegistry.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace vfApplication {

namespace {

using Body = osg::ref_ptr<DockWindowPrivate>;
using DockWindows = decltype(DockWindowManagerPrivate::dockWindows);

DockWindowManagerInterface& screen(const DockWindowManagerPrivate* body)
{
    VF_REQUIRE(body->dockWindowManagerInterface, "DockWindowManager",
               "no toolkit side has set DockWindowManagerProducer::Realizer");
    return *body->dockWindowManagerInterface;
}

/// Releases a body that was removed from the table. If nothing else references the body, deletes its window
/// first, so that the destructors of derived windows can still call getId and getTitle.
void release(Body& body)
{
    if (!body || body->referenceCount() != 1 || !body->dockWindow)
        return;
    // The reference that the window gave up in moveToTable: its destructor releases it.
    body->ref();
    delete body->dockWindow;
}

/// Adds the body of a window to the table and releases the window's own reference on it: the table then owns
/// the window.
DockWindow& moveToTable(std::unique_ptr<DockWindow> dockWindow, DockWindows& table,
                        const vfBase::VfString& id)
{
    Body entry = dockWindow->getDockWindowPrivate();
    // Before the reference is given up: inserting may throw.
    Body& place = table[id];
    entry->unref_nodelete();
    std::swap(place, entry);
    release(entry);
    return *dockWindow.release();
}

/// Calls @p use for each window that is in the table and was not removed meanwhile, in the order of the ids.
/// @p use may add and remove windows, including the one that it is called for.
template <class Use>
void forEachWindow(const DockWindowManagerPrivate* manager, Use use)
{
    const osg::ref_ptr<const DockWindowManagerPrivate> held(manager);
    const DockWindows table = manager->dockWindows;
    const std::map<vfBase::VfString, Body> entries = table.asStdMap();
    for (const auto& [id, body] : entries) {
        const auto present = table.asStdMap().find(id);
        const bool isListed = present != table.asStdMap().end() && present->second == body;
        if (isListed && body->dockWindow && body->dockWindowInterface)
            use(id, *body);
    }
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
    vfBase::crosswise::endHandle(d, &DockWindowManagerPrivate::dockWindowManager);
}

bool DockWindowManager::addDockWindow(DockWindow* dockWindow)
{
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::addDockWindow");
    if (!dockWindow || !dockWindow->getDockWindowPrivate())
        return false;
    const vfBase::VfString id = dockWindow->getId();
    if (findDockWindow(id.c_str()))
        return false;
    d->dockWindows[id] = dockWindow->getDockWindowPrivate();
    return true;
}

DockWindow& DockWindowManager::addNewDockWindow()
{
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::addNewDockWindow");
    auto dockWindow = std::make_unique<DockWindow>();
    const vfBase::VfString id = dockWindow->getId();
    return moveToTable(std::move(dockWindow), d->dockWindows, id);
}

DockWindow& DockWindowManager::addNewOrGetExistingDockWindow(const char* id, DockWindow::DockArea area,
                                                             bool visible, bool startHidden, int shortcut,
                                                             bool* existed)
{
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::addNewOrGetExistingDockWindow");
    DockWindow* found = findDockWindow(id);
    if (existed)
        *existed = found != nullptr;
    if (found)
        return *found;
    if (!id)
        return addNewDockWindow();
    const vfBase::VfString key(id);
    DockWindowRegistry* registry = DockWindowRegistry::instance(false);
    std::unique_ptr<DockWindow> made(registry ? registry->create(id) : nullptr);
    if (!made) {
        made = std::make_unique<DockWindow>(id);
        made->setVisible(!startHidden && visible);
        made->setShortcut(shortcut);
        screen(d).dockDockWindowToArea(area, made.get());
    }
    return moveToTable(std::move(made), d->dockWindows, key);
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
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::removeDockWindow");
    const DockWindowPrivate* body = dockWindow ? dockWindow->getDockWindowPrivate() : nullptr;
    if (!body)
        return false;
    const auto found = std::find_if(d->dockWindows.begin(), d->dockWindows.end(),
                                    [body](const auto& entry) { return entry.second == body; });
    if (found == d->dockWindows.end())
        return false;
    // Removed from the table first, so that the destructor of the window may use the manager.
    Body released = found->second;
    d->dockWindows.asStdMap().erase(found);
    release(released);
    return true;
}

bool DockWindowManager::removeDockWindow(const char* id)
{
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::removeDockWindow");
    if (!id)
        return false;
    Body released = d->dockWindows.value(id);
    const bool isRemoved = d->dockWindows.remove(id);
    release(released);
    return isRemoved;
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
    return peekNextDockWindow();
}

DockWindow* DockWindowManager::previousDockWindow()
{
    return nullptr; // a new iterator has no previous entry
}

DockWindow* DockWindowManager::peekNextDockWindow() const
{
    return hasNextDockWindow() ? d->dockWindows.getIterator().peekNext().value->dockWindow : nullptr;
}

DockWindow* DockWindowManager::peekPreviousDockWindow() const
{
    return nullptr;
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
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::onLanguageChange");
    forEachWindow(d, [](const vfBase::VfString&, const DockWindowPrivate& body) {
        body.dockWindowInterface->onLanguageChange();
    });
}

void DockWindowManager::saveDockWindowsState()
{
    VF_REQUIRE_APPLICATION_THREAD("DockWindowManager::saveDockWindowsState");
    const osg::ref_ptr<DockWindowManagerSettings> settings = DockWindowManagerSettings::instance(false);
    if (!settings)
        return;
    forEachWindow(d, [&settings](const vfBase::VfString& id, const DockWindowPrivate& body) {
        settings->setDockWindowVisibleState(id, body.dockWindowInterface->getVisible());
        if (body.dockWindow)
            settings->setDockWindowAutoHideState(id, body.dockWindowInterface->getAutoHide());
        if (body.dockWindow)
            settings->setDockWindowAreaState(id, body.dockWindowInterface->getArea());
    });
}

DockWindowManagerInterface* DockWindowManager::getDockWindowManagerInterface()
{
    return d->dockWindowManagerInterface.get();
}

DockWindowManagerPrivate::~DockWindowManagerPrivate()
{
    vfBase::crosswise::endBody(dockWindowManager, &DockWindowManager::d);
    dockWindowManagerInterface.reset();
    // Each window is removed from the table before it is destroyed: its destructor may use the table.
    while (!dockWindows.isEmpty()) {
        Body released = dockWindows.asStdMap().begin()->second;
        dockWindows.asStdMap().erase(dockWindows.asStdMap().begin());
        release(released);
    }
}

DockWindowManagerInterface::~DockWindowManagerInterface() = default;

DockWindowManagerProducer* DockWindowManagerProducer::Realizer = nullptr;

DockWindowManagerProducer::~DockWindowManagerProducer() = default;

} // namespace vfApplication
