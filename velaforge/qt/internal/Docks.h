// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>
#include <velaforge/qt/QtDockWindow.h>

#include <QByteArray>
#include <QObject>
#include <QPointer>

#include <map>
#include <string>
#include <vector>

class QAction;
class QDockWidget;
class QMainWindow;
class QMenu;

namespace vfApplication {

class AutoHideStrips;

/// All dock windows of the process as far as the screen goes: makes their halves, and puts them where they stood.
///
/// Halves are made whenever a dock window is, be it long before there is a main window.
class VFAPPLICATIONQT_EXPORT Docks : public QObject
{
    Q_OBJECT

public:
    /// Makes this kind of dock window, and of their manager, the one of the process.
    static void install();

    explicit Docks(QMainWindow& window);
    ~Docks() override;

    /// @return the halves whose windows are there, in the order in which they were made
    static std::vector<QtDockWindow*> halves();

    /// Puts the windows into the main window: at first as they want to stand, then as they stood when the layout was
    /// saved. Windows that were not there then get places of their own, which leave the others where they are.
    void restore();

    /// Shows the windows that float, in front of the main window and with their titles on a screen. To be called once that is
    /// shown: window managers keep a window in front of those only that they know.
    void showFloating();

    /// Keeps how everything stands in the settings objects.
    void save();

    /// Everything as it is without anything kept.
    void reset();

    /// Looks after windows that came or went since the last time. Cheap when none did.
    void update();

    /// Fills a menu with an entry for each window, which shows and hides it.
    void fillMenu(QMenu& menu);

    /// @return false for an id that no window has
    bool toggle(const std::string& id);

private:
    struct Standing
    {
        bool isVisible = true;
        bool hidesItself = false;
    };

    void realizeAll();
    void hideFloating();
    void settle(QtDockWindow& half);
    void placeBeside(QtDockWindow& half, DockWindow::DockArea area);
    static std::string idOf(const QtDockWindow& half);

    QMainWindow& m_window;
    AutoHideStrips* m_strips;
    bool m_isRestored = false;
    bool m_hasNewcomers = false; ///< windows of which the kept layout knows nothing
    QByteArray m_restoredLayout; ///< as it was when the window had come to rest
    std::vector<QtDockWindow*> m_settled;
    std::vector<QPointer<QDockWidget>> m_floating; ///< that wait for the main window
    QByteArray m_defaultLayout;
    std::map<std::string, Standing> m_defaults;
    std::map<std::string, QAction*> m_keys; ///< what shows a window by its shortcut
};

} // namespace vfApplication
