// SPDX-License-Identifier: MIT
#include "headless/HeadlessDocManager.h"

#include "headless/HeadlessModelView.h"

#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/OffscreenRenderer.h>

namespace vfViewer {

HeadlessDocManager::HeadlessDocManager() : ViewerDocManager(HeadlessModelView::s_classInfo) {}

void HeadlessDocManager::waitFor(vfIsolation::Job& job, bool isSaving)
{
    if (vfApplication::HeadlessApplication::wantsSnapshot())
        vfApplication::OffscreenRenderer::prepare();
    ViewerDocManager::waitFor(job, isSaving);
}

} // namespace vfViewer
