// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// A dock window that nobody sees: it keeps how it would stand.
///
/// At first it is visible, docked nowhere, allowed everywhere, and may be closed, moved, torn off and tabbed.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindow : public DockWindowInterface
{
public:
    HeadlessDockWindow();
    ~HeadlessDockWindow() override;

    const vfBase::VfString& getTitle() const { return m_title; }

    void setTitle(const char* title, const char* context) override;

    /// A window that stands in an area which is no longer allowed goes to none.
    void setAllowedDockingAreas(unsigned int areas) override;
    unsigned int getAllowedDockingAreas() const override;

    /// @return whether it stands in no area, though it may be torn off
    bool isFloating() const override;
    void setVisible(bool visible) override;
    bool getVisible() const override;
    void setAllowTabbing(bool allow) override;
    bool getAllowTabbing() const override;
    void setAllowTabbed(bool allow) override;
    bool getAllowTabbed() const override;

    /// @return false: there are no tabs without a screen
    bool isTabbed() const override;
    void setCloseable(bool closeable) override;
    bool getCloseable() const override;
    void setMoveable(bool moveable) override;
    bool getMoveable() const override;
    void setFloatable(bool floatable) override;
    bool getFloatable() const override;
    void setAutoHide(bool autoHide) override;
    bool getAutoHide() const override;

    /// An area that is not allowed changes nothing; NoDockArea always is.
    void setArea(DockWindow::DockArea area) override;
    DockWindow::DockArea getArea() const override;

    /// Nothing: titles are told anew by those who translate them.
    void onLanguageChange() override;

private:
    vfBase::VfString m_title;
    unsigned int m_allowedAreas = DockWindow::AllDockAreas;
    bool m_visible = true;
    bool m_allowTabbing = true;
    bool m_allowTabbed = true;
    bool m_closeable = true;
    bool m_moveable = true;
    bool m_floatable = true;
    bool m_autoHide = false;
    DockWindow::DockArea m_area = DockWindow::NoDockArea;
};

} // namespace vfApplication
