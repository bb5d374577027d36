// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>
#include <velaforge/shell/StatusBarInterface.h>

#include <map>

namespace vfApplication {

/// A status bar that nobody sees: it keeps what it would show.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessStatusBar : public StatusBarInterface
{
public:
    struct Field
    {
        vfBase::VfString text;
        int value = 0;
    };

    HeadlessStatusBar();
    ~HeadlessStatusBar() override;

    /// Null empties the field.
    void updateStatus(StatusBarTextEnum kind, const char* text, int value) override;

    /// What is below 0 or above 100 counts as that.
    void updateProgressPercent(int percent) override;
    void updateProgressText(const char* text) override;

    /// @return what was told last, an empty field before
    Field getField(StatusBarTextEnum kind) const;
    int getProgressPercent() const { return m_percent; }
    const vfBase::VfString& getProgressText() const { return m_progressText; }

private:
    std::map<StatusBarTextEnum, Field> m_fields;
    int m_percent = 0;
    vfBase::VfString m_progressText;
};

} // namespace vfApplication
