// SPDX-License-Identifier: MIT
#include "headless/HeadlessModelView.h"

#include "model/FirstView.h"
#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/headless/ScenePicture.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>

#include <vector>

namespace vfViewer {

namespace {

vfBase::VfObject* createView()
{
    return new HeadlessModelView;
}

/// Has the points of a scene drawn from where they are, for as long as this lives: a copy that the driver keeps is worth it
/// only when there is another picture.
class DrawnOnce : public osg::NodeVisitor
{
public:
    explicit DrawnOnce(osg::Node& scene) : NodeVisitor(TRAVERSE_ALL_CHILDREN) { scene.accept(*this); }
    ~DrawnOnce() override
    {
        for (const osg::ref_ptr<osg::Geometry>& geometry : m_geometries)
            geometry->setUseVertexBufferObjects(true);
    }
    DrawnOnce(const DrawnOnce&) = delete;
    DrawnOnce& operator=(const DrawnOnce&) = delete;

    void apply(osg::Geometry& geometry) override
    {
        if (!geometry.getUseVertexBufferObjects() || geometry.getUseDisplayList())
            return;
        geometry.setUseVertexBufferObjects(false);
        m_geometries.emplace_back(&geometry);
    }

private:
    std::vector<osg::ref_ptr<osg::Geometry>> m_geometries;
};

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
    m_style = firstStyle();
    return true;
}

ModelDocument& HeadlessModelView::model() const
{
    return dynamic_cast<ModelDocument&>(*getDocument());
}

osg::ref_ptr<osg::Image> HeadlessModelView::takeSnapshot(const vfApplication::SnapshotFormat& format,
                                                         vfBase::VfString& reason)
{
    return takePicture(format, reason);
}

osg::ref_ptr<osg::Image> HeadlessModelView::takePicture(const vfApplication::SnapshotFormat& format,
                                                        vfBase::VfString& reason)
{
    const DrawnOnce once(model().scene());
    vfScene::ShownScene scene(model().getModelScene());
    scene.setStyle(m_style);
    scene.setBackground(ViewerSettings::instance().getBackground());
    scene.setMeasurements(model().getMeasurements());
    const double aspect = static_cast<double>(format.width) / format.height;
    vfScene::CameraPlacement camera = placement(aspect);
    if (format.turn)
        camera = vfScene::placeOnTurntable(model().scene(), camera.lookAt, *format.turn, aspect,
                                           m_style.projection);
    return vfApplication::renderPicture(scene, camera, format, reason);
}

vfScene::CameraPlacement HeadlessModelView::placement(double aspect) const
{
    // The shape of the picture is known when it is taken: until then it is remembered what is to be seen.
    if (m_camera)
        return vfScene::placementOf(*m_camera, aspect, m_style.projection);
    osg::Node& whole = model().scene();
    if (!m_fitted)
        return vfScene::placeCamera(whole, m_view, aspect, m_style.projection);
    osg::Node& part = m_part && model().getModelScene().contains(*m_part) ? *m_part : whole;
    return vfScene::placeCamera(part, *m_fitted, aspect, m_style.projection);
}

void HeadlessModelView::lookFrom(vfScene::StandardView view)
{
    m_view = view;
    m_camera.reset();
    m_fitted.reset();
    m_part = nullptr;
}

void HeadlessModelView::fit(osg::Node* part)
{
    m_fitted = getCamera();
    m_part = part;
    m_camera.reset();
}

vfScene::LookAt HeadlessModelView::getCamera() const
{
    const vfApplication::SnapshotFormat usual;
    return placement(static_cast<double>(usual.width) / usual.height).lookAt;
}

void HeadlessModelView::setCamera(const vfScene::LookAt& camera)
{
    m_camera = camera;
}

} // namespace vfViewer
