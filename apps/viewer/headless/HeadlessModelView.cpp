// SPDX-License-Identifier: MIT
#include "headless/HeadlessModelView.h"

#include "model/LitScene.h"
#include "model/ModelDocument.h"

#include <velaforge/base/ClassInfo.h>

#include <optional>

namespace vfViewer {

namespace {

vfBase::VfObject* createView()
{
    return new HeadlessModelView;
}

std::optional<StandardView> chosen;

/// A flat image is looked at straight on, unless a view was asked for.
StandardView viewFor(const vfApplication::Document& document)
{
    const bool isImage = dynamic_cast<const ImageDocument*>(&document) != nullptr;
    return chosen.value_or(isImage ? StandardView::Front : StandardView::FrontRight);
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
    return dynamic_cast<ModelDocument*>(document) != nullptr;
}

osg::ref_ptr<osg::Image> HeadlessModelView::takeSnapshot(int width, int height, vfBase::VfString& reason)
{
    const auto& document = dynamic_cast<const ModelDocument&>(*getDocument());
    const CameraPlacement camera =
        placeCamera(document.scene(), viewFor(document), static_cast<double>(width) / height);
    return m_renderer.render(*makeLitScene(document.scene()), camera.view, camera.projection, width, height,
                             reason);
}

void HeadlessModelView::setStandardView(StandardView view)
{
    chosen = view;
}

} // namespace vfViewer
