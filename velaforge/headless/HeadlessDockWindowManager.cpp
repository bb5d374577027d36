// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessDockWindowManager.h>

namespace vfApplication {

void HeadlessDockWindowManager::dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow)
{
    if (dockWindow)
        dockWindow->setArea(area);
}

DockWindow::DockArea HeadlessDockWindowManager::getDockedDockWindowArea(DockWindow* dockWindow) const
{
    return dockWindow ? dockWindow->getArea() : DockWindow::NoDockArea;
}

} // namespace vfApplication
