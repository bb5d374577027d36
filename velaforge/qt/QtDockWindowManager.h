// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/qt/Export.h>

namespace vfApplication {

/// Places dock windows in the main window, see QtDockWindow::setArea.
class VFAPPLICATIONQT_EXPORT QtDockWindowManager : public DockWindowManagerInterface
{
public:
    /// Nothing for null.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) override;

    /// @return NoDockArea for null
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const override;
};

} // namespace vfApplication
