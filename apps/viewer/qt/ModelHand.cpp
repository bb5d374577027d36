// SPDX-License-Identifier: MIT
#include "qt/ModelHand.h"

#include "model/ModelDocument.h"

#include <velaforge/application/Application.h>
#include <velaforge/qt/QtApplication.h>
#include <velaforge/scene/Measurement.h>
#include <velaforge/shell/StatusBar.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/Transform>

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace vfViewer {

namespace {

/// So near on the screen, a point that is picked is the corner itself, in the widget's units.
constexpr double snapDistance = 8;

/// What comes nearer to the middle than that on the screen turns and scales by nothing that a hand could mean.
constexpr double smallestLever = 4;

vfScene::MeasureKind kindOf(Tool tool)
{
    switch (tool) {
    case Tool::MeasureAngle:
        return vfScene::MeasureKind::Angle;
    case Tool::MeasureRadius:
        return vfScene::MeasureKind::Radius;
    default:
        return vfScene::MeasureKind::Distance;
    }
}

const char* nameOf(Tool tool)
{
    switch (tool) {
    case Tool::Rotate:
        return "Rotate";
    case Tool::Scale:
        return "Scale";
    default:
        return "Move";
    }
}

void say(const QString& text)
{
    if (auto* application = vfApplication::Application::instance(false))
        application->getStatusBar().updateStatus(vfApplication::StatusBarMessage, text.toUtf8(), 0);
}

double distance(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

} // namespace

ModelHand::ModelHand(vfApplication::QtViewport& viewport, ModelDocument& document, Pick pick)
    : m_viewport(viewport), m_document(document), m_pick(std::move(pick))
{
    m_viewport.installEventFilter(this);
}

ModelHand::~ModelHand() = default;

void ModelHand::setTool(Tool tool)
{
    endDrag(false);
    m_tool = tool;
    m_points.clear();
    m_viewport.setCursor(tool == Tool::Select            ? Qt::ArrowCursor
                         : tool >= Tool::MeasureDistance ? Qt::CrossCursor
                                                         : Qt::SizeAllCursor);
    switch (tool) {
    case Tool::Select:
        say(QString());
        break;
    case Tool::MeasureDistance:
        say(tr("Click on two points to measure their distance."));
        break;
    case Tool::MeasureAngle:
        say(tr("Click on three points to measure the angle at the second."));
        break;
    case Tool::MeasureRadius:
        say(tr("Click on three points to measure the circle through them."));
        break;
    default:
        say(tr("Select a part and drag it."));
    }
}

osg::Vec3d ModelHand::snapped(const Hit& hit) const
{
    const osg::Geometry* geometry = hit.path.empty() ? nullptr : hit.path.back()->asGeometry();
    const auto* points = geometry ? dynamic_cast<const osg::Vec3Array*>(geometry->getVertexArray()) : nullptr;
    if (!points)
        return hit.point;
    const osg::Matrixd place = osg::computeLocalToWorld(hit.path);
    const osg::Vec3d local = hit.point * osg::Matrixd::inverse(place);
    const auto nearest =
        std::min_element(points->begin(), points->end(), [&local](const osg::Vec3& a, const osg::Vec3& b) {
            return (osg::Vec3d(a) - local).length2() < (osg::Vec3d(b) - local).length2();
        });
    if (nearest == points->end())
        return hit.point;
    const osg::Vec3d corner = osg::Vec3d(*nearest) * place;
    const bool isNear = distance(m_viewport.project(corner), m_viewport.project(hit.point)) < snapDistance;
    return isNear ? corner : hit.point;
}

bool ModelHand::click(const QPointF& position)
{
    if (m_tool < Tool::MeasureDistance)
        return false;
    const std::optional<Hit> hit = m_pick(position);
    if (!hit)
        return true;
    m_points.push_back(snapped(*hit));
    const vfScene::MeasureKind kind = kindOf(m_tool);
    if (m_points.size() < vfScene::pointsFor(kind)) {
        m_document.updateAllViews(nullptr);
        return true;
    }
    const std::optional<vfScene::Measurement> measured = measure(kind, m_points);
    m_points.clear();
    if (measured) {
        say(QString::fromStdString(describe(*measured, m_document.getUnits())));
        m_document.addMeasurement(*measured);
    } else {
        say(tr("There is no such thing between these points."));
        m_document.updateAllViews(nullptr);
    }
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
    return true;
}

bool ModelHand::beginDrag(const QPointF& position)
{
    osg::Node* selected = m_document.getSelection();
    const std::optional<Hit> hit = selected ? m_pick(position) : std::nullopt;
    if (!hit || std::find(hit->path.begin(), hit->path.end(), selected) == hit->path.end())
        return false;
    osg::ComputeBoundsVisitor bounds;
    selected->accept(bounds);
    const osg::NodePath above(hit->path.begin(), std::find(hit->path.begin(), hit->path.end(), selected));
    m_middle = osg::Vec3d(bounds.getBoundingBox().center()) * osg::computeLocalToWorld(above);
    m_dragged = selected;
    m_grip = hit->point;
    m_start = position;
    m_matrix = osg::Matrixd();
    return true;
}

/// @return what the drag has come to, in the scene
osg::Matrixd ModelHand::change(const QPointF& position) const
{
    osg::Vec3d eye;
    osg::Vec3d ahead;
    m_viewport.getRay(position, eye, ahead);
    osg::Vec3d lookFrom;
    osg::Vec3d lookTo;
    osg::Vec3d up;
    m_viewport.getLookAt(lookFrom, lookTo, up);
    osg::Vec3d axis = lookFrom - lookTo;
    axis.normalize();
    if (m_tool == Tool::Move) {
        // On the plane through the grip that faces the eye.
        const double slope = ahead * axis;
        if (std::fabs(slope) < 1e-6)
            return m_matrix;
        const osg::Vec3d there = eye + ahead * (((m_grip - eye) * axis) / slope);
        return osg::Matrixd::translate(there - m_grip);
    }
    const QPointF middle = m_viewport.project(m_middle);
    const double before = distance(m_start, middle);
    const double now = distance(position, middle);
    if (before < smallestLever || now < smallestLever)
        return m_matrix;
    osg::Matrixd matrix;
    if (m_tool == Tool::Rotate) {
        const auto angle = [&middle](const QPointF& point) {
            return std::atan2(middle.y() - point.y(), point.x() - middle.x());
        };
        matrix = osg::Matrixd::rotate(angle(position) - angle(m_start), axis);
    } else {
        const double factor = now / before;
        matrix = osg::Matrixd::scale(factor, factor, factor);
    }
    return osg::Matrixd::translate(-m_middle) * matrix * osg::Matrixd::translate(m_middle);
}

void ModelHand::drag(const QPointF& position)
{
    m_matrix = change(position);
    vfScene::ModelScene& scene = m_document.getModelScene();
    const vfScene::ModelScene::Preview previewing(scene);
    if (m_preview)
        m_preview->undo(vfBase::VfVariant());
    if (!scene.contains(*m_dragged)) {
        m_preview = nullptr;
        m_dragged = nullptr;
        return;
    }
    m_preview = new vfScene::TransformCommand(
        nameOf(m_tool), scene, *m_dragged, vfScene::TransformCommand::inFrameOf(*m_dragged, scene, m_matrix));
    m_preview->Do(vfBase::VfVariant());
}

void ModelHand::endDrag(bool isKept)
{
    const osg::ref_ptr<osg::Node> dragged = std::exchange(m_dragged, nullptr);
    const osg::ref_ptr<vfScene::TransformCommand> preview = std::exchange(m_preview, nullptr);
    if (!dragged || !preview)
        return;
    {
        const vfScene::ModelScene::Preview previewing(m_document.getModelScene());
        preview->undo(vfBase::VfVariant());
    }
    if (!isKept)
        return;
    m_document.transform(
        *dragged, nameOf(m_tool),
        vfScene::TransformCommand::inFrameOf(*dragged, m_document.getModelScene(), m_matrix));
    if (auto* shell = vfApplication::QtApplication::instance())
        shell->updateActions();
}

bool ModelHand::eventFilter(QObject* watched, QEvent* event)
{
    const bool isTransforming = m_tool > Tool::Select && m_tool < Tool::MeasureDistance;
    // Who has just selected the part presses for the second time.
    const bool isPress =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress && isTransforming && !m_dragged) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::LeftButton && press->modifiers() == Qt::NoModifier)
            return beginDrag(press->position());
    }
    if (!m_dragged)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseMove:
        drag(static_cast<QMouseEvent*>(event)->position());
        return true;
    case QEvent::MouseButtonRelease:
        endDrag(true);
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
            return false;
        endDrag(false);
        event->accept();
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace vfViewer
