// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/headless/Export.h>

namespace vfApplication {

/// The part of a dock window for programs without a screen: stores the state and shows nothing.
///
/// A new window is visible, not docked, allowed in all areas, and may be closed, moved, floated and tabbed.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindow : public DockWindowInterface
{
public:
    /// Makes a part with the state described above.
    HeadlessDockWindow();
    ~HeadlessDockWindow() override;

    /// Returns the title set last.
    const vfBase::VfString& getTitle() const { return m_title; }

    /// Stores @p title. @p context has no effect.
    void setTitle(const char* title, const char* context) override;

    /// Stores the areas: bits of DockWindow::DockArea. An area is allowed if all its bits are; NoDockArea
    /// always is. If the present area is no longer allowed, it becomes NoDockArea.
    void setAllowedDockingAreas(unsigned int areas) override;
    unsigned int getAllowedDockingAreas() const override;

    /// Returns whether the window is floatable and not docked.
    bool isFloating() const override;
    void setVisible(bool visible) override;
    bool getVisible() const override;
    void setAllowTabbing(bool allow) override;
    bool getAllowTabbing() const override;
    void setAllowTabbed(bool allow) override;
    bool getAllowTabbed() const override;

    /// Returns false: there are no tabs without a screen.
    bool isTabbed() const override;
    void setCloseable(bool closeable) override;
    bool getCloseable() const override;
    void setMoveable(bool moveable) override;
    bool getMoveable() const override;
    void setFloatable(bool floatable) override;
    bool getFloatable() const override;
    void setAutoHide(bool autoHide) override;
    bool getAutoHide() const override;

    /// Stores the area. Does nothing if it is not allowed.
    void setArea(DockWindow::DockArea area) override;
    DockWindow::DockArea getArea() const override;

    /// Does nothing: the code that translates a title sets it.
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
