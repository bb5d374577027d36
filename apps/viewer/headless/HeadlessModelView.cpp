// SPDX-License-Identifier: MIT
#include "headless/HeadlessModelView.h"

#include "model/FirstView.h"
#include "model/LitScene.h"
#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"

#include <velaforge/base/ClassInfo.h>

namespace vfViewer {

namespace {

vfBase::VfObject* createView()
{
    return new HeadlessModelView;
}

} // namespace

const vfBase::ClassInfo HeadlessModelView::s_classInfo("vfViewer", "HeadlessModelView",
                                                       "vfViewer::HeadlessModelView", &View::s_classInfo,
                                                       nullptr, sizeof(HeadlessModelView), createView);

const vfBase::ClassInfo* HeadlessModelView::getClassInfo() const
{
    return &s_classInfo;
}

bool HeadlessModelView::onCreate(vfApplication::Document* document, const vfBase::Options&)
{
    if (!dynamic_cast<ModelDocument*>(document))
        return false;
    m_view = firstViewFor(*document);
    return true;
}

osg::ref_ptr<osg::Image> HeadlessModelView::takeSnapshot(int width, int height, vfBase::VfString& reason)
{
    const auto& document = dynamic_cast<const ModelDocument&>(*getDocument());
    const CameraPlacement camera = placeCamera(document.scene(), m_view, static_cast<double>(width) / height);
    const ViewerSettings& settings = ViewerSettings::instance();
    m_renderer.setBackground(settings.getBackgroundTop(), settings.getBackgroundBottom());
    return m_renderer.render(*makeLitScene(document.scene()), camera.view, camera.projection, width, height,
                             reason);
}

void HeadlessModelView::lookFrom(StandardView view)
{
    m_view = view;
}

} // namespace vfViewer
