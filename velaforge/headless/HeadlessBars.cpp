// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessBars.h>

#include <velaforge/application/Application.h>
#include <velaforge/documents/Document.h>

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

void HeadlessTitleBar::titleBarOperationA()
{
    const Application* application = Application::instance(false);
    const Document* document = application ? application->getActiveDocument() : nullptr;
    const vfBase::VfString program = application ? application->getApplicationName() : "";
    m_title = document ? document->getTitle() + (document->isModified() ? "* - " : " - ") + program : program;
}

} // namespace vfApplication
