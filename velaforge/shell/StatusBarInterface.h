// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/shell/StatusBar.h>

namespace vfApplication {

/// The base class of a toolkit side's status bar, which implements the three updates.
class VFAPPLICATION_EXPORT StatusBarInterface : public StatusBar
{
public:
    /// Makes a status bar.
    StatusBarInterface() = default;
    ~StatusBarInterface() override;

    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override = 0;
    void updateProgressPercent(int percent) override = 0;
    void updateProgressText(const char* text) override = 0;
};

} // namespace vfApplication
