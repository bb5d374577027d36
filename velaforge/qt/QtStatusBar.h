// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>
#include <velaforge/shell/StatusBarInterface.h>

#include <memory>

class QStatusBar;

namespace vfApplication {

struct QtStatusBarPrivate;

/// The status bar of the main window: what is going on at the left, a progress, and fields at the right.
///
/// | text field | where | value |
/// |---|---|---|
/// | StatusBarMessage | at the left | for how many milliseconds; 0 until the next |
/// | StatusBarSelection | at the right | a number above 1 is shown behind the text |
/// | StatusBarPosition | at the right | none |
/// | any other | at the right | none |
///
/// A field without text takes no place. The progress shows from 0 to 99 percent, and is drawn at once: who
/// works on the window's thread tells how far it is without letting anything else happen.
class VFAPPLICATIONQT_EXPORT QtStatusBar : public StatusBarInterface
{
public:
    /// @param bar  what shows it; nothing is shown any more once that is gone
    explicit QtStatusBar(QStatusBar& bar);
    ~QtStatusBar() override;

    /// Null empties the field.
    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override;

    /// What is below 0 or above 100 counts as that.
    void updateProgressPercent(int percent) override;

    /// The text beside the progress; null for none.
    void updateProgressText(const char* text) override;

private:
    std::unique_ptr<QtStatusBarPrivate> d;
};

} // namespace vfApplication
