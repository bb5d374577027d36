// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowInterface.h>
#include <velaforge/qt/Export.h>

#include <memory>

class QDockWidget;
class QMainWindow;
class QWidget;

namespace vfApplication {

class AutoHideStrips;
struct QtDockWindowPrivate;

/// A dock window on the screen.
///
/// Before the main window is there it keeps what it is told; from then on every answer is that of the panel
/// as it stands. At first it is visible, docked nowhere, allowed everywhere, and may be closed, moved, torn
/// off and tabbed.
class VFAPPLICATIONQT_EXPORT QtDockWindow : public DockWindowInterface
{
public:
    /// Makes the toolkit side's part of @p window.
    explicit QtDockWindow(DockWindow& window);
    ~QtDockWindow() override;

    QtDockWindow(const QtDockWindow&) = delete;
    QtDockWindow& operator=(const QtDockWindow&) = delete;

    /// @param title    shown as @p context has it translated, a context of QCoreApplication::translate
    /// @param context  null where the title is not translated
    void setTitle(const char* title, const char* context) override;

    /// A window that is docked where it is no longer allowed is torn off, or goes to an area that is allowed.
    void setAllowedDockingAreas(unsigned int areas) override;
    unsigned int getAllowedDockingAreas() const override;
    bool isFloating() const override;

    /// @return whether it is there for the user: not closed, be it behind a tab or a button at the edge
    bool getVisible() const override;
    void setVisible(bool visible) override;
    void setAllowTabbing(bool allow) override;
    bool getAllowTabbing() const override;
    void setAllowTabbed(bool allow) override;
    bool getAllowTabbed() const override;

    /// @return whether it shares its place with other visible windows by means of tabs
    bool isTabbed() const override;
    void setCloseable(bool closeable) override;
    bool getCloseable() const override;
    void setMoveable(bool moveable) override;
    bool getMoveable() const override;

    /// A window that is torn off and may not be is docked.
    void setFloatable(bool floatable) override;
    bool getFloatable() const override;

    /// A window that hides itself is a button at the edge of its area; it opens over its neighbours when the
    /// button is pressed, and closes when the user turns to something else. A window that is torn off does
    /// not hide.
    void setAutoHide(bool autoHide) override;
    bool getAutoHide() const override;

    /// NoDockArea tears the window off. An area that is not allowed, or is more than one, changes nothing.
    void setArea(DockWindow::DockArea area) override;
    DockWindow::DockArea getArea() const override;
    void onLanguageChange() override;

    // --- beyond the contract

    /// @return the panel; null until the main window is there, and once it is gone
    QDockWidget* getWidget() const;

    /// @return the window; null once it is gone
    DockWindow* getDockWindow() const;

    /// Makes the panel in the main window, as it was told to stand.
    void realize(QMainWindow& window, AutoHideStrips& strips);

    /// Takes the panel off the screen for good.
    void detach();

    /// Moves the window out of a tab group that it, or another in it, does not allow.
    void enforceTabbing();

private:
    std::unique_ptr<QtDockWindowPrivate> d;
};

} // namespace vfApplication
