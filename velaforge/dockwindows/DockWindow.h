// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindowInterface;
class DockWindowPrivate;

/// A panel that can be docked, without a widget: an id, a title and a shortcut. All the rest is the toolkit side's.
///
///     class Layers : public vfApplication::DockWindow
///     {
///     public:
///         Layers() : DockWindow("solar::Layers") { setTitle("Layers", nullptr); }
///     };
///     application.getDockWindowManager().addDockWindow(new Layers);  // the caller's, as long as it is in the table
///
/// DockWindowProducer makes the toolkit side's half. Where none is set, only the id, the title's getter and the shortcut
/// may be used. Handle and body own each other and either may be destroyed first; what the toolkit side made is its own
/// to delete.
class VFAPPLICATION_EXPORT DockWindow
{
public:
    /// Where a window stands, or may stand: each value is a bit. Toolkit sides may add values of their own.
    enum DockArea : int
    {
        NoDockArea = 0, ///< nowhere in particular; what an unknown window has
        LeftDockArea = 1,
        RightDockArea = 2,
        TopDockArea = 4,
        BottomDockArea = 8,
        AllDockAreas = 15
    };

    /// With an id of its own, "vfApplication::DockWindow::" and a number that no other window gets.
    DockWindow();

    /// @param id  taken as it stands; null has one generated
    explicit DockWindow(const char* id);

    DockWindow(const DockWindow&) = delete;
    DockWindow& operator=(const DockWindow&) = delete;

    // In the order of their slots, which is part of the binary interface.

    /// @return the id, which does not change; here that of the constructor
    virtual const char* getId() const;

    /// For derived windows that know how they want to stand at first; nothing here calls it.
    /// @return false here
    virtual bool applyDefaultState();

    virtual ~DockWindow();

    const char* getTitle() const;

    /// @param title    null counts as the empty text
    /// @param context  for the toolkit side, which knows what it means; may be null, and is not kept
    void setTitle(const char* title, const char* context);

    /// Kept here only.
    int getShortcut() const;
    void setShortcut(int shortcut);

    // The toolkit side keeps all these, so that they are what the screen shows.
    bool getVisible() const;
    void setVisible(bool visible);
    bool getAutoHide() const;
    void setAutoHide(bool autoHide);
    DockArea getArea() const;
    void setArea(DockArea area);
    bool getCloseable() const;
    void setCloseable(bool closeable);
    bool getMoveable() const;
    void setMoveable(bool moveable);
    bool getFloatable() const;
    void setFloatable(bool floatable);

    /// Whether other windows may be put behind a tab of this one.
    bool getAllowTabbing() const;
    void setAllowTabbing(bool allow);

    /// Whether this window may be put behind a tab of another.
    bool getAllowTabbed() const;
    void setAllowTabbed(bool allow);

    /// A set of DockArea bits.
    unsigned int getAllowedDockingAreas() const;
    void setAllowedDockingAreas(unsigned int areas);
    bool isFloating() const;
    bool isTabbed() const;

    /// @return what the toolkit side made for this window, not owned; null where no producer was set
    DockWindowInterface* getDockWindowInterface();

    DockWindowPrivate* getDockWindowPrivate() { return d; }
    const DockWindowPrivate* getDockWindowPrivate() const { return d; }

private:
    friend class DockWindowPrivate;

    explicit DockWindow(DockWindowPrivate* body);

    DockWindowPrivate* d;
};

} // namespace vfApplication
