// SPDX-License-Identifier: MIT
#include <velaforge/headless/HeadlessTitleBar.h>

#include <velaforge/application/Application.h>
#include <velaforge/documents/Document.h>

namespace vfApplication {

void HeadlessTitleBar::titleBarOperationA()
{
    const Application* application = Application::instance(false);
    const Document* document = application ? application->getActiveDocument() : nullptr;
    const vfBase::VfString program = application ? application->getApplicationName() : "";
    m_title = document ? document->getTitle() + (document->isModified() ? "* - " : " - ") + program : program;
}

} // namespace vfApplication
