// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

/// The toolkit side's half of a dock window, which shows it and keeps how it stands. Each operation is called by the one
/// of the same name on DockWindow.
class VFAPPLICATION_EXPORT DockWindowInterface
{
public:
    DockWindowInterface() = default;
    DockWindowInterface(const DockWindowInterface&) = default;
    DockWindowInterface& operator=(const DockWindowInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~DockWindowInterface();

    /// @param title    never null, and not to be kept
    /// @param context  may be null
    virtual void setTitle(const char* title, const char* context) = 0;
    virtual void setAllowedDockingAreas(unsigned int areas) = 0;
    virtual unsigned int getAllowedDockingAreas() const = 0;
    virtual bool isFloating() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool getVisible() const = 0;
    virtual void setAllowTabbing(bool allow) = 0;
    virtual bool getAllowTabbing() const = 0;
    virtual void setAllowTabbed(bool allow) = 0;
    virtual bool getAllowTabbed() const = 0;
    virtual bool isTabbed() const = 0;
    virtual void setCloseable(bool closeable) = 0;
    virtual bool getCloseable() const = 0;
    virtual void setMoveable(bool moveable) = 0;
    virtual bool getMoveable() const = 0;
    virtual void setFloatable(bool floatable) = 0;
    virtual bool getFloatable() const = 0;
    virtual void setAutoHide(bool autoHide) = 0;
    virtual bool getAutoHide() const = 0;
    virtual void setArea(DockWindow::DockArea area) = 0;
    virtual DockWindow::DockArea getArea() const = 0;

    /// The user chose another language; DockWindowManager::onLanguageChange calls it.
    virtual void onLanguageChange() = 0;
};

} // namespace vfApplication
