// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

class DockWindowManagerInterface;
class DockWindowManagerPrivate;

/// The dock windows of the application, by id.
///
///     bool existed = false;
///     vfApplication::DockWindow& layers = application.getDockWindowManager().addNewOrGetExistingDockWindow(
///         layersId, vfApplication::DockWindow::LeftDockArea, true, false, 0, &existed);
///
/// Windows that the manager makes are its own, and go when they are removed; those that are added stay their maker's.
/// Docking is the toolkit side's, which DockWindowManagerProducer makes: without one the manager is a mere table, and
/// what docks must not be called. Handle and body own each other and either may be destroyed first. Belongs to the
/// thread of the user interface.
class VFAPPLICATION_EXPORT DockWindowManager
{
public:
    DockWindowManager();
    ~DockWindowManager();

    DockWindowManager(const DockWindowManager&) = delete;
    DockWindowManager& operator=(const DockWindowManager&) = delete;

    /// Enters a window, which stays the caller's and is not docked.
    /// @return false, with nothing changed, for null and for an id that another window has
    bool addDockWindow(DockWindow* dockWindow);

    /// Makes a window with an id of its own, the manager's, and does not dock it.
    DockWindow& addNewDockWindow();

    /// Makes a window unless there is one of that id, in which case nothing else that is passed has any effect.
    ///
    /// A producer that registered under @p id, the pointer and not the text, makes the window and sets it up. Otherwise
    /// it is a plain one, shown and docked as told.
    /// @param id           null makes a window as addNewDockWindow() does
    /// @param startHidden  wins over @p visible
    /// @param existed      is told whether the window was there; may be null
    /// @return the window; a new one is the manager's
    DockWindow& addNewOrGetExistingDockWindow(const char* id, DockWindow::DockArea area, bool visible,
                                              bool startHidden, int shortcut, bool* existed);

    /// @return the window of that id; null if there is none, if it is gone although its entry is there, and for null
    DockWindow* findDockWindow(const char* id) const;
    unsigned int getNumDockWindows() const;

    /// Places a window on the screen, whether the table knows it or not.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow);
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const;

    /// Takes a window out of the table, and destroys it if it was the manager's.
    /// @return false if it is not in the table. @param dockWindow  must not be null
    bool removeDockWindow(DockWindow* dockWindow);

    /// @return false for an unknown id and for null
    bool removeDockWindow(const char* id);

    // Each of these looks from the first entry anew; no place is kept between two calls. To go through all windows,
    // keep their ids.

    /// @return whether there is a window at all
    bool hasNextDockWindow() const;

    /// @return false
    bool hasPreviousDockWindow() const;

    /// @return the window with the smallest id, at every call; there must be one
    DockWindow* nextDockWindow();
    DockWindow* peekNextDockWindow() const;

    /// Not to be called: there is never a previous one.
    DockWindow* previousDockWindow();
    DockWindow* peekPreviousDockWindow() const;

    /// Without any effect.
    void toBackDockWindow();
    void toFrontDockWindow();

    /// Tells the toolkit side's half of each window that the user chose another language. For the toolkit side to call.
    void onLanguageChange();

    /// Writes how each window stands into DockWindowManagerSettings; what is there of other windows stays. For the
    /// toolkit side to call, before the settings are saved.
    void saveDockWindowsState();

    /// @return what the toolkit side made, owned here; null where no producer was set
    DockWindowManagerInterface* getDockWindowManagerInterface();

    DockWindowManagerPrivate* getDockWindowManagerPrivate() { return d; }
    const DockWindowManagerPrivate* getDockWindowManagerPrivate() const { return d; }

private:
    friend class DockWindowManagerPrivate;

    explicit DockWindowManager(DockWindowManagerPrivate* body);

    DockWindowManagerPrivate* d;
};

} // namespace vfApplication
