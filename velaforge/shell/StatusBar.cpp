// SPDX-License-Identifier: MIT
#include <velaforge/shell/StatusBar.h>

#include <velaforge/base/CrosswisePair.h>
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
    vfBase::crosswise::endHandle(d, &StatusBarPrivate::owner);
}

StatusBarPrivate::~StatusBarPrivate()
{
    statusBarInterface = nullptr;
    vfBase::crosswise::endBody(owner, &StatusBar::d);
}

StatusBarInterface::~StatusBarInterface() = default;

StatusBarInterface* StatusBar::getStatusBarInterface()
{
    return d ? d->statusBarInterface : nullptr;
}

void StatusBar::updateStatus(StatusBarTextEnum, const char*, int) {}

void StatusBar::updateProgressPercent(int) {}

void StatusBar::updateProgressText(const char*) {}

} // namespace vfApplication
