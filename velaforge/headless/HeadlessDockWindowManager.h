// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// The part of the dock window manager for programs without a screen.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowManager : public DockWindowManagerInterface
{
public:
    /// Sets the area of @p dockWindow. Does nothing for null.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) override;

    /// Returns the area of @p dockWindow; NoDockArea for null.
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const override;
};

} // namespace vfApplication
