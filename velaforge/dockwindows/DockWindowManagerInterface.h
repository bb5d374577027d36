// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

/// The toolkit side's half of the dock window manager: places windows on the screen.
class VFAPPLICATION_EXPORT DockWindowManagerInterface
{
public:
    DockWindowManagerInterface() = default;
    DockWindowManagerInterface(const DockWindowManagerInterface&) = default;
    DockWindowManagerInterface& operator=(const DockWindowManagerInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~DockWindowManagerInterface();

    /// Places the window in the area.
    virtual void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) = 0;

    /// @return where the window stands
    virtual DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const = 0;
};

} // namespace vfApplication
