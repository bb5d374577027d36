// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindowInterface;
class DockWindowPrivate;

/// A panel that can be docked, without a widget. Stores an id, a title and a shortcut; the toolkit side
/// stores and shows everything else.
///
///     class Layers : public vfApplication::DockWindow
///     {
///     public:
///         Layers() : DockWindow("solar::Layers") { setTitle("Layers", nullptr); }
///     };
///     application.getDockWindowManager().addDockWindow(new Layers);  // still owned by the caller
///
/// The constructor has DockWindowProducer::Realizer make a DockWindowInterface, which the toolkit side owns.
/// Without a producer call only getId, getTitle, getShortcut and setShortcut: every other operation ends the
/// process with a message. Handle and body own each other and either may be destroyed first: releasing the
/// last reference on the body deletes the handle. Dock windows belong to the thread of the user interface.
class VFAPPLICATION_EXPORT DockWindow
{
public:
    /// The areas where a window is, or may be, docked. Each value is a bit; toolkit sides may add values.
    enum DockArea : int
    {
        NoDockArea = 0,     ///< not docked; returned for an unknown window
        LeftDockArea = 1,   ///< at the left edge of the main window
        RightDockArea = 2,  ///< at the right edge of the main window
        TopDockArea = 4,    ///< at the upper edge of the main window
        BottomDockArea = 8, ///< at the lower edge of the main window
        AllDockAreas = 15   ///< the set of the four areas
    };

    /// Makes a window with a generated id: "vfApplication::DockWindow::" and a number that no other window
    /// gets.
    DockWindow();

    /// Makes a window with the id @p id; null generates one.
    explicit DockWindow(const char* id);

    DockWindow(const DockWindow&) = delete;
    DockWindow& operator=(const DockWindow&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// Returns the id, which does not change; the one of the constructor here.
    virtual const char* getId() const;

    /// Sets the initial state of a derived window; does nothing here. This library does not call it.
    /// @return false here
    virtual bool applyDefaultState();

    virtual ~DockWindow();

    /// Returns the title; the pointer is valid until the title changes.
    const char* getTitle() const;

    /// Sets the title and passes both arguments on to the toolkit side.
    /// @param title    null counts as the empty text
    /// @param context  passed on only; on the Qt side the context of QCoreApplication::translate, null to
    ///                 show the title untranslated
    void setTitle(const char* title, const char* context);

    /// Returns the shortcut; 0, as unless set, means none.
    int getShortcut() const;

    /// Sets the shortcut that shows and hides the window: a key and its modifiers in one number, as in
    /// QKeyCombination::toCombined, for example `Qt::CTRL | Qt::Key_7`. 0 means none. Stored here only: the
    /// Qt side reads it.
    void setShortcut(int shortcut);

    // The toolkit side stores the following state, so that the getters return what the screen shows.

    /// Returns whether the window is shown.
    bool getVisible() const;

    /// Shows or hides the window.
    void setVisible(bool visible);

    /// Returns whether the window is reduced to a button at the edge of its area and opens when the button is
    /// pressed.
    bool getAutoHide() const;

    /// Sets whether the window is reduced to a button at the edge of its area while the user does not need
    /// it.
    void setAutoHide(bool autoHide);

    /// Returns the area where the window is docked; NoDockArea if it is not docked.
    DockArea getArea() const;

    /// Docks the window in @p area. The toolkit side may refuse an area that is not allowed.
    void setArea(DockArea area);

    /// Returns whether the user may close the window.
    bool getCloseable() const;

    /// Sets whether the user may close the window.
    void setCloseable(bool closeable);

    /// Returns whether the user may move the window to another area.
    bool getMoveable() const;

    /// Sets whether the user may move the window to another area.
    void setMoveable(bool moveable);

    /// Returns whether the window may float outside the main window.
    bool getFloatable() const;

    /// Sets whether the window may float outside the main window.
    void setFloatable(bool floatable);

    /// Returns whether other windows may share the place of this window by tabs.
    bool getAllowTabbing() const;

    /// Sets whether other windows may share the place of this window by tabs.
    void setAllowTabbing(bool allow);

    /// Returns whether this window may share the place of another window by tabs.
    bool getAllowTabbed() const;

    /// Sets whether this window may share the place of another window by tabs.
    void setAllowTabbed(bool allow);

    /// Returns the areas where the window may be docked, as a set of DockArea bits.
    unsigned int getAllowedDockingAreas() const;

    /// Sets the areas where the window may be docked, as a set of DockArea bits.
    void setAllowedDockingAreas(unsigned int areas);

    /// Returns whether the window floats outside the main window.
    bool isFloating() const;

    /// Returns whether the window shares its place with another window by tabs.
    bool isTabbed() const;

    /// Returns the toolkit side's part of this window, which the toolkit side owns; null without a producer.
    DockWindowInterface* getDockWindowInterface();

    /// Returns the body, which this window owns.
    DockWindowPrivate* getDockWindowPrivate() { return d; }

    /// Returns the body, which this window owns.
    const DockWindowPrivate* getDockWindowPrivate() const { return d; }

private:
    friend class DockWindowPrivate;

    explicit DockWindow(DockWindowPrivate* body);

    DockWindowPrivate* d;
};

} // namespace vfApplication
