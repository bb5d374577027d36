// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// Keeps the areas of dock windows without a screen.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowManager : public DockWindowManagerInterface
{
public:
    /// Moves a window to an area; does nothing for null.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) override;

    /// @return the area of a window; NoDockArea for null
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const override;
};

} // namespace vfApplication
