// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtDockWindowManager.h>

namespace vfApplication {

void QtDockWindowManager::dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow)
{
    if (dockWindow)
        dockWindow->setArea(area);
}

DockWindow::DockArea QtDockWindowManager::getDockedDockWindowArea(DockWindow* dockWindow) const
{
    return dockWindow ? dockWindow->getArea() : DockWindow::NoDockArea;
}

} // namespace vfApplication
