// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessStatusBar.h>

#include <algorithm>

namespace vfApplication {

HeadlessStatusBar::HeadlessStatusBar() = default;

HeadlessStatusBar::~HeadlessStatusBar() = default;

void HeadlessStatusBar::updateStatus(StatusBarTextEnum kind, const char* text, int value)
{
    m_fields[kind] = {text, value};
}

void HeadlessStatusBar::updateProgressPercent(int percent)
{
    m_percent = std::clamp(percent, 0, 100);
}

void HeadlessStatusBar::updateProgressText(const char* text)
{
    m_progressText = text;
}

HeadlessStatusBar::Field HeadlessStatusBar::getField(StatusBarTextEnum kind) const
{
    const auto found = m_fields.find(kind);
    return found == m_fields.end() ? Field() : found->second;
}

} // namespace vfApplication
