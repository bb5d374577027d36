// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/StatusBarInterface.h>

#include <map>

namespace vfApplication {

/// A status bar for programs without a screen: stores the texts and numbers and shows nothing.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessStatusBar : public StatusBarInterface
{
public:
    /// The contents of a field.
    struct Field
    {
        vfBase::VfString text; ///< the text set last
        int value = 0;         ///< the number set with it
    };

    /// Makes a status bar with empty fields.
    HeadlessStatusBar();
    ~HeadlessStatusBar() override;

    /// Stores @p text and @p value for the field @p kind; null clears the text.
    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override;

    /// Stores the progress, limited to the range from 0 to 100.
    void updateProgressPercent(int percent) override;

    /// Stores the text of the progress; null clears it.
    void updateProgressText(const char* text) override;

    /// Returns the contents of the field @p kind; empty unless set.
    Field getField(StatusBarTextEnum kind) const;

    /// Returns the progress, from 0 to 100; 0 unless set.
    int getProgressPercent() const { return m_percent; }

    /// Returns the text of the progress; empty unless set.
    const vfBase::VfString& getProgressText() const { return m_progressText; }

private:
    std::map<StatusBarTextEnum, Field> m_fields;
    int m_percent = 0;
    vfBase::VfString m_progressText;
};

} // namespace vfApplication
