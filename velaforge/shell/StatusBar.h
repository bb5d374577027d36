// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class StatusBarInterface;
class StatusBarPrivate;

/// Which text field of the status bar is meant.
enum StatusBarTextEnum : int
{
    StatusBarMessage = 0,   ///< what is going on
    StatusBarSelection = 1, ///< what is selected
    StatusBarPosition = 2   ///< where the pointer is in the scene
};

/// The status bar of the shell: text fields and a progress. A plain one shows nothing.
///
///     application.getStatusBar().updateProgressPercent(40);
///
/// Handle and body own each other and either may be destroyed first.
class VFAPPLICATION_EXPORT StatusBar
{
public:
    StatusBar();
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;

    // In the order of their slots, which is part of the binary interface.
    virtual ~StatusBar();

    /// @param value  shown with the text where the shell likes to; shells decide
    virtual void updateStatus(StatusBarTextEnum kind, const char* text, int value);

    /// @param percent  0 to 100
    virtual void updateProgressPercent(int percent);
    virtual void updateProgressText(const char* text);

    /// @return null, for every status bar: see StatusBarPrivate
    StatusBarInterface* getStatusBarInterface();

    StatusBarPrivate* getStatusBarPrivate() { return d; }
    const StatusBarPrivate* getStatusBarPrivate() const { return d; }

private:
    friend class StatusBarPrivate;

    StatusBarPrivate* d;
};

/// Body of StatusBar.
class VFAPPLICATION_EXPORT StatusBarPrivate
{
public:
    explicit StatusBarPrivate(StatusBar* bar) : owner(bar) {}

    /// Destroys the owner, unless that has cut itself off before.
    virtual ~StatusBarPrivate();

    StatusBarPrivate(const StatusBarPrivate&) = delete;
    StatusBarPrivate& operator=(const StatusBarPrivate&) = delete;

    /// Found by a cast in the constructor of StatusBar, where the object is no StatusBarInterface yet: always null.
    StatusBarInterface* statusBarInterface = nullptr;
    StatusBar* owner;
};

} // namespace vfApplication
