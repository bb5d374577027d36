// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindow.h>

#include <velaforge/base/CrosswisePair.h>
#include <velaforge/base/LifeWatch.h>
#include <velaforge/base/Require.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowProducer.h>

#include <string>

namespace vfApplication {

namespace {

std::string nextId()
{
    static int windows = 0;
    return "vfApplication::DockWindow::" + std::to_string(++windows);
}

/// Returns the toolkit side's part of a window. Everything except id, title and shortcut requires it.
DockWindowInterface& shown(const DockWindowPrivate* body)
{
    VF_REQUIRE(body, "DockWindow", "used after its body was destroyed");
    VF_REQUIRE(body->dockWindowInterface, "DockWindow",
               "no toolkit side has set DockWindowProducer::Realizer");
    return *body->dockWindowInterface;
}

} // namespace

DockWindow::DockWindow() : DockWindow(static_cast<const char*>(nullptr)) {}

DockWindow::DockWindow(const char* id) : DockWindow(new DockWindowPrivate(id))
{
    if (DockWindowProducer::Realizer)
        d->dockWindowInterface = DockWindowProducer::Realizer->create(this);
}

DockWindow::DockWindow(DockWindowPrivate* body) : d(body)
{
    d->dockWindow = this;
    d->ref();
}

DockWindow::~DockWindow()
{
    vfBase::LifeWatch<DockWindow>::end(this);
    vfBase::crosswise::endHandle(d, &DockWindowPrivate::dockWindow);
}

const char* DockWindow::getId() const
{
    return d ? d->id.c_str() : "";
}

bool DockWindow::applyDefaultState()
{
    return false;
}

const char* DockWindow::getTitle() const
{
    return d ? d->title.c_str() : "";
}

void DockWindow::setTitle(const char* title, const char* context)
{
    if (!d)
        return;
    d->title = title ? title : "";
    shown(d).setTitle(d->title.c_str(), context);
}

int DockWindow::getShortcut() const
{
    return d ? d->shortcut : 0;
}

void DockWindow::setShortcut(int shortcut)
{
    if (d)
        d->shortcut = shortcut;
}

bool DockWindow::getVisible() const
{
    return shown(d).getVisible();
}

void DockWindow::setVisible(bool visible)
{
    shown(d).setVisible(visible);
}

bool DockWindow::getAutoHide() const
{
    return shown(d).getAutoHide();
}

void DockWindow::setAutoHide(bool autoHide)
{
    shown(d).setAutoHide(autoHide);
}

DockWindow::DockArea DockWindow::getArea() const
{
    return shown(d).getArea();
}

void DockWindow::setArea(DockArea area)
{
    shown(d).setArea(area);
}

bool DockWindow::getCloseable() const
{
    return shown(d).getCloseable();
}

void DockWindow::setCloseable(bool closeable)
{
    shown(d).setCloseable(closeable);
}

bool DockWindow::getMoveable() const
{
    return shown(d).getMoveable();
}

void DockWindow::setMoveable(bool moveable)
{
    shown(d).setMoveable(moveable);
}

bool DockWindow::getFloatable() const
{
    return shown(d).getFloatable();
}

void DockWindow::setFloatable(bool floatable)
{
    shown(d).setFloatable(floatable);
}

bool DockWindow::getAllowTabbing() const
{
    return shown(d).getAllowTabbing();
}

void DockWindow::setAllowTabbing(bool allow)
{
    shown(d).setAllowTabbing(allow);
}

bool DockWindow::getAllowTabbed() const
{
    return shown(d).getAllowTabbed();
}

void DockWindow::setAllowTabbed(bool allow)
{
    shown(d).setAllowTabbed(allow);
}

unsigned int DockWindow::getAllowedDockingAreas() const
{
    return shown(d).getAllowedDockingAreas();
}

void DockWindow::setAllowedDockingAreas(unsigned int areas)
{
    shown(d).setAllowedDockingAreas(areas);
}

bool DockWindow::isFloating() const
{
    return shown(d).isFloating();
}

bool DockWindow::isTabbed() const
{
    return shown(d).isTabbed();
}

DockWindowInterface* DockWindow::getDockWindowInterface()
{
    return d ? d->dockWindowInterface : nullptr;
}

DockWindowPrivate::DockWindowPrivate(const char* windowId) : id(windowId ? windowId : nextId()) {}

DockWindowPrivate::~DockWindowPrivate()
{
    vfBase::crosswise::endBody(dockWindow, &DockWindow::d);
}

DockWindowInterface::~DockWindowInterface() = default;

DockWindowProducer* DockWindowProducer::Realizer = nullptr;

DockWindowProducer::~DockWindowProducer() = default;

} // namespace vfApplication
