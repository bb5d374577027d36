// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/dockwindows/DockWindow.h>

namespace vfApplication {

class DockWindowManagerInterface;
class DockWindowManagerPrivate;

/// Holds the dock windows of the application, by id.
///
///     bool existed = false;
///     vfApplication::DockWindow& layers = application.getDockWindowManager().addNewOrGetExistingDockWindow(
///         layersId, vfApplication::DockWindow::LeftDockArea, true, false, 0, &existed);
///
/// The manager owns the windows that it makes and destroys them when they are removed; the caller owns the
/// windows that it adds. DockWindowManagerProducer makes the toolkit side's part, which docks windows.
/// Without a producer do not call dockDockWindowToArea and getDockedDockWindowArea, and do not have
/// addNewOrGetExistingDockWindow make a window. Handle and body own each other and either may be destroyed
/// first. Belongs to the thread of the user interface.
class VFAPPLICATION_EXPORT DockWindowManager
{
public:
    /// Makes a manager without windows and has DockWindowManagerProducer::Realizer make the toolkit side's
    /// part.
    DockWindowManager();
    ~DockWindowManager();

    DockWindowManager(const DockWindowManager&) = delete;
    DockWindowManager& operator=(const DockWindowManager&) = delete;

    /// Adds @p dockWindow, which the caller owns. Does not dock it.
    /// @return false, with nothing changed, for null and if another window has the id
    bool addDockWindow(DockWindow* dockWindow);

    /// Makes a window with a generated id and adds it. Does not dock it.
    /// @return the window, which the manager owns
    DockWindow& addNewDockWindow();

    /// Returns the window with the id @p id, or makes and adds one.
    ///
    /// If a producer is registered in DockWindowRegistry under @p id, compared as a pointer, it makes the
    /// window and sets it up. Otherwise the window is a plain DockWindow, which is shown and docked according
    /// to the arguments. The other arguments have no effect on a window that exists or that a producer makes.
    /// @param id           id of the window; null makes a window as addNewDockWindow() does
    /// @param area         area where a new window is docked
    /// @param visible      whether a new window is shown
    /// @param startHidden  hides a new window, even if @p visible is true
    /// @param shortcut     shortcut of a new window, see DockWindow::setShortcut
    /// @param existed      set to true if the window existed, otherwise to false; may be null
    /// @return the window; the manager owns a new one
    DockWindow& addNewOrGetExistingDockWindow(const char* id, DockWindow::DockArea area, bool visible,
                                              bool startHidden, int shortcut, bool* existed);

    /// Returns the window with the id @p id; null if there is none, if its owner has destroyed it, and for
    /// null.
    DockWindow* findDockWindow(const char* id) const;

    /// Returns the number of entries, including those of windows that their owners have destroyed.
    unsigned int getNumDockWindows() const;

    /// Docks @p dockWindow in @p area, even if the manager does not have the window. Requires a producer.
    void dockDockWindowToArea(DockWindow::DockArea area, DockWindow* dockWindow);

    /// Returns the area where @p dockWindow is docked, even if the manager does not have the window. Requires
    /// a producer.
    DockWindow::DockArea getDockedDockWindowArea(DockWindow* dockWindow) const;

    /// Removes @p dockWindow, which must not be null, and destroys it if the manager owns it.
    /// @return false if the manager does not have the window
    bool removeDockWindow(DockWindow* dockWindow);

    /// Removes the window with the id @p id, and destroys it if the manager owns it.
    /// @return false for an unknown id and for null
    bool removeDockWindow(const char* id);

    // Each of the following calls starts at the first entry: the manager stores no position between two
    // calls. To visit all windows, store their ids.

    /// Returns whether there is any window.
    bool hasNextDockWindow() const;

    /// Returns false.
    bool hasPreviousDockWindow() const;

    /// Returns the window with the smallest id, at every call. There must be a window.
    DockWindow* nextDockWindow();

    /// Returns the window with the smallest id, at every call. There must be a window.
    DockWindow* peekNextDockWindow() const;

    /// Must not be called: there is never a previous window.
    DockWindow* previousDockWindow();

    /// Must not be called: there is never a previous window.
    DockWindow* peekPreviousDockWindow() const;

    /// Has no effect.
    void toBackDockWindow();

    /// Has no effect.
    void toFrontDockWindow();

    /// Calls DockWindowInterface::onLanguageChange of each window. The toolkit side calls this after the user
    /// chose another language.
    void onLanguageChange();

    /// Stores visibility, auto-hide state and area of each window in DockWindowManagerSettings; the records
    /// of other windows stay. The toolkit side calls this before the settings are saved.
    void saveDockWindowsState();

    /// Returns the toolkit side's part, which this manager owns; null without a producer.
    DockWindowManagerInterface* getDockWindowManagerInterface();

    /// Returns the body, which this manager owns.
    DockWindowManagerPrivate* getDockWindowManagerPrivate() { return d; }

    /// Returns the body, which this manager owns.
    const DockWindowManagerPrivate* getDockWindowManagerPrivate() const { return d; }

private:
    friend class DockWindowManagerPrivate;

    explicit DockWindowManager(DockWindowManagerPrivate* body);

    DockWindowManagerPrivate* d;
};

} // namespace vfApplication
