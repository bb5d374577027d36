// SPDX-License-Identifier: MIT
#include "qt/QtModelView.h"

#include "model/FirstView.h"
#include "model/ModelDocument.h"
#include "model/ViewerSettings.h"
#include "qt/ModelHand.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/headless/ScenePicture.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/qt/QtViewport.h>

#include <QOpenGLContext>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace vfViewer {

namespace {

vfBase::VfObject* createView()
{
    return new QtModelView;
}

} // namespace

const vfBase::ClassInfo QtModelView::s_classInfo("vfViewer", "QtModelView", "vfViewer::QtModelView",
                                                 &View::s_classInfo, nullptr, sizeof(QtModelView),
                                                 createView);

QtModelView::QtModelView() : m_style(firstStyle()) {}

QtModelView::~QtModelView() = default;

const vfBase::ClassInfo* QtModelView::getClassInfo() const
{
    return &s_classInfo;
}

ModelDocument& QtModelView::model() const
{
    return dynamic_cast<ModelDocument&>(*getDocument());
}

QWidget* QtModelView::createWidget(QWidget& parent)
{
    if (!dynamic_cast<ModelDocument*>(getDocument()))
        return nullptr;
    // While the model is read there is nothing to draw, and the window is to have its hands free.
    m_place = new QWidget(&parent);
    auto* layout = new QVBoxLayout(m_place);
    layout->setContentsMargins(0, 0, 0, 0);
    if (model().scene().getNumChildren() > 0)
        makeViewport();
    return m_place;
}

void QtModelView::makeViewport()
{
    m_viewport = new vfApplication::QtViewport(m_place);
    m_viewport->setObjectName(QStringLiteral("model"));
    m_place->layout()->addWidget(m_viewport);
    m_place->setFocusProxy(m_viewport);
    m_scene = std::make_unique<vfScene::ShownScene>(model().getModelScene());
    m_scene->setStyle(m_style);
    m_viewport->setOrthographic(m_style.projection == vfScene::Projection::Orthographic);
    m_viewport->setScene(&m_scene->root());
    m_viewport->setPick([this](const QPointF& position) { return pick(position); });
    m_viewport->setFieldOfView(vfScene::heightAngle);
    m_viewport->setContinuous(false); // what moves goes by the clock of the document
    QObject::connect(m_viewport, &vfApplication::QtViewport::cameraMoved, m_viewport,
                     [this] { m_isStandard = false; });
    QObject::connect(m_viewport, &vfApplication::QtViewport::aspectChanged, m_viewport, [this] {
        if (m_isStandard)
            place();
    });
    QObject::connect(m_viewport, &vfApplication::QtViewport::clicked, m_viewport,
                     [this](const QPointF& position, Qt::MouseButton button) {
                         // What lies under the pointer after a double click is not what was meant.
                         if (std::exchange(m_isApproached, false))
                             return;
                         if (button == Qt::LeftButton && !m_hand->click(position))
                             select(position);
                     });
    QObject::connect(m_viewport, &vfApplication::QtViewport::doubleClicked, m_viewport,
                     [this](const QPointF& position) {
                         if (m_hand->getTool() == Tool::Select)
                             approach(position);
                     });
    m_hand = std::make_unique<ModelHand>(*m_viewport, model(),
                                         [this](const QPointF& position) { return pick(position); });
    redraw();
}

void QtModelView::onUpdate(View*)
{
    if (!m_viewport && m_place && model().scene().getNumChildren() > 0)
        makeViewport();
    if (m_scene)
        m_scene->update();
    if (!m_isPlaced && m_viewport && model().scene().getNumChildren() > 0)
        lookFrom(firstViewFor(*getDocument()));
    redraw();
}

void QtModelView::redraw()
{
    if (!m_viewport)
        return;
    const ViewerSettings& settings = ViewerSettings::instance();
    m_scene->setBackground(settings.getBackground());
    const vfScene::Background background = m_scene->getBackground();
    m_viewport->setBackground(background.top, background.bottom);
    const MouseSettings& mouse = settings.getMouse();
    m_viewport->setOrbit(mouse.isTrackball ? vfApplication::QtViewport::Orbit::Trackball
                                           : vfApplication::QtViewport::Orbit::Turntable);
    m_viewport->setOrbitSpeed(mouse.orbitPercent / 100.0);
    m_scene->setSelection(model().getSelection());
    m_scene->setMeasurements(model().getMeasurements(), m_hand->getPoints());
    m_viewport->update();
}

void QtModelView::setStyle(const vfScene::ViewStyle& style)
{
    const bool isOther = style.projection != m_style.projection;
    m_style = style;
    if (!m_viewport)
        return;
    m_scene->setStyle(style);
    m_viewport->setOrthographic(style.projection == vfScene::Projection::Orthographic);
    if (isOther && m_isStandard)
        place();
    redraw();
}

void QtModelView::lookFrom(vfScene::StandardView view)
{
    if (!m_viewport)
        return;
    m_standardView = view;
    m_isStandard = true;
    m_isPlaced = true;
    place();
}

void QtModelView::place()
{
    take(vfScene::placeCamera(model().scene(), m_standardView, m_viewport->getAspect(), m_style.projection));
}

void QtModelView::take(const vfScene::CameraPlacement& camera)
{
    m_viewport->lookAt(camera.lookAt.eye, camera.lookAt.centre, camera.lookAt.up);
}

void QtModelView::fit(osg::Node* part)
{
    if (!m_viewport)
        return;
    m_isStandard = false;
    osg::Node& seen = part ? *part : model().scene();
    take(vfScene::placeCamera(seen, getCamera(), m_viewport->getAspect(), m_style.projection));
}

vfScene::LookAt QtModelView::getCamera() const
{
    vfScene::LookAt camera;
    if (m_viewport)
        m_viewport->getLookAt(camera.eye, camera.centre, camera.up);
    return camera;
}

void QtModelView::setCamera(const vfScene::LookAt& camera)
{
    if (!m_viewport)
        return;
    m_isStandard = false;
    m_isPlaced = true;
    m_viewport->lookAt(camera.eye, camera.centre, camera.up);
}

osg::ref_ptr<osg::Image> QtModelView::takePicture(const vfApplication::SnapshotFormat& format,
                                                  vfBase::VfString& reason)
{
    if (!m_viewport) {
        reason = "there is nothing to see";
        return nullptr;
    }
    // A thread has one context in use, and that of the window may be it still.
    if (QOpenGLContext* current = QOpenGLContext::currentContext())
        current->doneCurrent();
    const double aspect = double(format.width) / format.height;
    vfScene::ShownScene scene(model().getModelScene());
    scene.setStyle(m_style);
    scene.setBackground(ViewerSettings::instance().getBackground());
    scene.setMeasurements(model().getMeasurements());
    return vfApplication::renderPicture(scene, vfScene::placementOf(getCamera(), aspect, m_style.projection),
                                        format, reason);
}

void QtModelView::follow()
{
    if (!m_scene)
        return;
    m_scene->follow();
    redraw();
}

bool QtModelView::setTool(Tool tool)
{
    if (!m_hand)
        return false;
    m_hand->setTool(tool);
    redraw();
    return true;
}

Tool QtModelView::getTool() const
{
    return m_hand ? m_hand->getTool() : Tool::Select;
}

std::optional<vfApplication::QtViewport::Hit> QtModelView::pick(const QPointF& position) const
{
    auto hit = m_viewport->pick(position, [this](const vfApplication::QtViewport::Hit& found) {
        return !m_scene->isCutAway(found.point) && m_scene->modelNode(*found.path.back());
    });
    if (!hit)
        return hit;
    // The nodes drawn may be copies; the caller needs those of the model.
    osg::NodePath path;
    for (osg::Node* node : hit->path) {
        if (osg::Node* original = m_scene->modelNode(*node))
            path.push_back(original);
    }
    hit->path = path;
    return hit;
}

osg::Node* QtModelView::partOf(const vfApplication::QtViewport::Hit& hit) const
{
    const auto parts = model().getModelScene().parts();
    osg::Node* part = nullptr;
    for (osg::Node* node : hit.path) {
        if (std::find(parts.begin(), parts.end(), node) != parts.end())
            part = node;
    }
    return part;
}

void QtModelView::approach(const QPointF& position)
{
    const auto hit = pick(position);
    osg::Node* part = hit ? partOf(*hit) : nullptr;
    if (!part)
        return;
    fit(part);
    m_viewport->setPivot(hit->point);
    m_isApproached = true;
}

void QtModelView::select(const QPointF& position)
{
    const auto hit = pick(position);
    model().setSelection(hit ? partOf(*hit) : nullptr);
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

} // namespace vfViewer
