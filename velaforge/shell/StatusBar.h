// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class StatusBarInterface;
class StatusBarPrivate;

/// The text fields of the status bar.
enum StatusBarTextEnum : int
{
    StatusBarMessage = 0,   ///< a message for the user
    StatusBarSelection = 1, ///< the selected objects
    StatusBarPosition = 2   ///< the position of the pointer in the scene
};

/// The status bar of the shell: text fields and a progress bar. An object of this class itself shows nothing;
/// a toolkit side derives from StatusBarInterface.
///
///     application.getStatusBar().updateProgressPercent(40);
///
/// Handle and body own each other and either may be destroyed first. Belongs to the thread of the user
/// interface.
class VFAPPLICATION_EXPORT StatusBar
{
public:
    /// Makes a status bar that shows nothing.
    StatusBar();
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    // In the order of their slots, which is part of the binary interface.
    virtual ~StatusBar();

    /// Shows @p text in a field. Does nothing here.
    /// @param kind   the field
    /// @param text   UTF-8; null clears the field
    /// @param value  meaning depends on the toolkit side. On the Qt side: milliseconds for which a
    ///               StatusBarMessage is shown, 0 for no limit; number of objects for StatusBarSelection,
    ///               shown if it exceeds 1
    virtual void updateStatus(StatusBarTextEnum kind, const char* text, int value);

    /// Shows a progress of @p percent, from 0 to 100. Does nothing here. 100 hides the progress bar of the Qt
    /// side.
    virtual void updateProgressPercent(int percent);

    /// Shows @p text, UTF-8, beside the progress; null clears it. Does nothing here.
    virtual void updateProgressText(const char* text);

    /// Returns null for every status bar, see StatusBarPrivate::statusBarInterface.
    StatusBarInterface* getStatusBarInterface();

    /// Returns the body, which this status bar owns.
    StatusBarPrivate* getStatusBarPrivate() { return d; }

    /// Returns the body, which this status bar owns.
    const StatusBarPrivate* getStatusBarPrivate() const { return d; }

private:
    friend class StatusBarPrivate;

    StatusBarPrivate* d;
};

/// Body of StatusBar.
class VFAPPLICATION_EXPORT StatusBarPrivate
{
public:
    /// Makes the body of @p bar.
    explicit StatusBarPrivate(StatusBar* bar) : owner(bar) {}

    /// Deletes the owner, unless it was destroyed before.
    virtual ~StatusBarPrivate();

    StatusBarPrivate(const StatusBarPrivate&) = delete;
    StatusBarPrivate& operator=(const StatusBarPrivate&) = delete;

    /// Always null, by contract: the constructor of StatusBar casts to it while the object is no
    /// StatusBarInterface yet.
    StatusBarInterface* statusBarInterface = nullptr;

    /// The status bar of this body, null after its destruction.
    StatusBar* owner;
};

} // namespace vfApplication
