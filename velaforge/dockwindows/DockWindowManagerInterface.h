// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

/// The toolkit side's part of the dock window manager: docks windows. A toolkit side derives from it.
/// DockWindowManager calls each operation from its operation of the same name, on the thread of the user
/// interface.
class VFAPPLICATION_EXPORT DockWindowManagerInterface
{
public:
    /// Makes a part of no manager.
    DockWindowManagerInterface() = default;

    /// Copies nothing: the class has no fields.
    DockWindowManagerInterface(const DockWindowManagerInterface&) = default;

    /// Copies nothing: the class has no fields.
    DockWindowManagerInterface& operator=(const DockWindowManagerInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~DockWindowManagerInterface();

    /// Docks @p dockWindow in @p area.
    virtual void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow) = 0;

    /// Returns the area where @p dockWindow is docked.
    virtual DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const = 0;
};

} // namespace vfApplication
