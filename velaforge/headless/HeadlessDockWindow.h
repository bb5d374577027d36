// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// A dock window without a screen: it keeps its state.
///
/// At first it is visible, in no area, allowed in all areas, and may be closed, moved, floated and tabbed.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindow : public DockWindowInterface
{
public:
    HeadlessDockWindow();
    ~HeadlessDockWindow() override;

    const vfBase::VfString& getTitle() const { return m_title; }

    void setTitle(const char* title, const char* context) override;

    /// Keeps the areas as bits of DockWindow::DockArea. An area is allowed when all its bits are; NoDockArea always is. A
    /// window whose area is no longer allowed moves to NoDockArea.
    void setAllowedDockingAreas(unsigned int areas) override;
    unsigned int getAllowedDockingAreas() const override;

    /// @return whether it is floatable and in no area
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

    /// Moves the window, unless the area is not allowed.
    void setArea(DockWindow::DockArea area) override;
    DockWindow::DockArea getArea() const override;

    /// Does nothing: whoever translates a title sets it.
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
