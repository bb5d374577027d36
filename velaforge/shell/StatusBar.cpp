// SPDX-License-Identifier: MIT
#include <velaforge/shell/StatusBar.h>

#include <velaforge/shell/StatusBarInterface.h>

namespace vfApplication {

StatusBar::StatusBar() : d(new StatusBarPrivate(this))
{
    // The object is a plain StatusBar as yet, so this finds nothing, also for a StatusBarInterface.
    // Shells rely on getStatusBarInterface() being null; it is not to be moved to a later point.
    d->statusBarInterface = dynamic_cast<StatusBarInterface*>(this);
}

StatusBar::~StatusBar()
{
    if (!d)
        return; // the body went first, and cut us off
    d->owner = nullptr;
    delete d;
    d = nullptr;
}

StatusBarPrivate::~StatusBarPrivate()
{
    statusBarInterface = nullptr;
    if (!owner)
        return;
    owner->d = nullptr;
    delete owner;
    owner = nullptr;
}

StatusBarInterface::~StatusBarInterface() = default;

StatusBarInterface* StatusBar::getStatusBarInterface()
{
    return d->statusBarInterface;
}

void StatusBar::updateStatus(StatusBarTextEnum, const char*, int) {}

void StatusBar::updateProgressPercent(int) {}

void StatusBar::updateProgressText(const char*) {}

} // namespace vfApplication
