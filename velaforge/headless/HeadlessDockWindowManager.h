// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// Places dock windows without a screen: a window stands in the area that its half says.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowManager : public DockWindowManagerInterface
{
public:
    /// Nothing for null.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) override;

    /// @return NoDockArea for null
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const override;
};

} // namespace vfApplication
