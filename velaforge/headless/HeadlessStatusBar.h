// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/StatusBarInterface.h>

#include <map>

namespace vfApplication {

/// A status bar without a screen: it keeps the texts and numbers that a window would show.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessStatusBar : public StatusBarInterface
{
public:
    /// One field of the bar.
    struct Field
    {
        vfBase::VfString text;
        int value = 0;
    };

    HeadlessStatusBar();
    ~HeadlessStatusBar() override;

    /// Keeps text and value of a field; null empties the text.
    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override;

    /// Keeps the progress, limited to 0 to 100.
    void updateProgressPercent(int percent) override;

    /// Keeps the text of the progress; must not be null.
    void updateProgressText(const char* text) override;

    /// @return the field as it was set last; an empty one before
    Field getField(StatusBarTextEnum kind) const;

    /// @return from 0 to 100; 0 before it is set
    int getProgressPercent() const { return m_percent; }
    const vfBase::VfString& getProgressText() const { return m_progressText; }

private:
    std::map<StatusBarTextEnum, Field> m_fields;
    int m_percent = 0;
    vfBase::VfString m_progressText;
};

} // namespace vfApplication
