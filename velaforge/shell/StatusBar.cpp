// SPDX-License-Identifier: MIT
#include <velaforge/shell/StatusBar.h>

#include <velaforge/base/CrosswisePair.h>
#include <velaforge/shell/StatusBarInterface.h>

namespace vfApplication {

StatusBar::StatusBar() : d(new StatusBarPrivate(this))
{
    // Null for every status bar, by contract: the object is still a plain StatusBar here, even if it will be
    // a StatusBarInterface. Do not move this cast to a later point.
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
