// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/shell/StatusBar.h>

namespace vfApplication {

/// A status bar that a toolkit side realises: the three updates are for it to define.
class VFAPPLICATION_EXPORT StatusBarInterface : public StatusBar
{
public:
    StatusBarInterface() = default;
    ~StatusBarInterface() override;

    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override = 0;
    void updateProgressPercent(int percent) override = 0;
    void updateProgressText(const char* text) override = 0;
};

} // namespace vfApplication
