// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

/// The toolkit side's part of a dock window: shows the window and stores its state. A toolkit side derives
/// from it. DockWindow calls each operation from its operation of the same name, on the thread of the user
/// interface.
class VFAPPLICATION_EXPORT DockWindowInterface
{
public:
    /// Makes a part that has no window yet.
    DockWindowInterface() = default;

    /// Copies nothing: the class has no fields.
    DockWindowInterface(const DockWindowInterface&) = default;

    /// Copies nothing: the class has no fields.
    DockWindowInterface& operator=(const DockWindowInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~DockWindowInterface();

    /// Shows @p title, which is never null and valid during the call only. @p context is what the caller
    /// passed to DockWindow::setTitle, null included.
    virtual void setTitle(const char* title, const char* context) = 0;

    /// Sets the areas where the window may be docked: bits of DockWindow::DockArea.
    virtual void setAllowedDockingAreas(unsigned int areas) = 0;

    /// Returns the areas where the window may be docked: bits of DockWindow::DockArea.
    virtual unsigned int getAllowedDockingAreas() const = 0;

    /// Returns whether the window floats outside the main window.
    virtual bool isFloating() const = 0;

    /// Shows or hides the window.
    virtual void setVisible(bool visible) = 0;

    /// Returns whether the window is shown.
    virtual bool getVisible() const = 0;

    /// Sets whether other windows may share the place of this window by tabs.
    virtual void setAllowTabbing(bool allow) = 0;

    /// Returns whether other windows may share the place of this window by tabs.
    virtual bool getAllowTabbing() const = 0;

    /// Sets whether this window may share the place of another window by tabs.
    virtual void setAllowTabbed(bool allow) = 0;

    /// Returns whether this window may share the place of another window by tabs.
    virtual bool getAllowTabbed() const = 0;

    /// Returns whether the window shares its place with another window by tabs.
    virtual bool isTabbed() const = 0;

    /// Sets whether the user may close the window.
    virtual void setCloseable(bool closeable) = 0;

    /// Returns whether the user may close the window.
    virtual bool getCloseable() const = 0;

    /// Sets whether the user may move the window to another area.
    virtual void setMoveable(bool moveable) = 0;

    /// Returns whether the user may move the window to another area.
    virtual bool getMoveable() const = 0;

    /// Sets whether the window may float outside the main window.
    virtual void setFloatable(bool floatable) = 0;

    /// Returns whether the window may float outside the main window.
    virtual bool getFloatable() const = 0;

    /// Sets whether the window is reduced to a button at the edge of its area.
    virtual void setAutoHide(bool autoHide) = 0;

    /// Returns whether the window is reduced to a button at the edge of its area.
    virtual bool getAutoHide() const = 0;

    /// Docks the window in the area, unless that is not allowed.
    virtual void setArea(DockWindow::DockArea area) = 0;

    /// Returns the area where the window is docked; DockWindow::NoDockArea if it is not docked.
    virtual DockWindow::DockArea getArea() const = 0;

    /// Called by DockWindowManager::onLanguageChange after the user chose another language.
    virtual void onLanguageChange() = 0;
};

} // namespace vfApplication
