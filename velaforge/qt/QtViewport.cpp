// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtViewport.h>

#include <velaforge/toolkit/GradientBackground.h>
#include <velaforge/toolkit/NoPaging.h>
#include <velaforge/toolkit/OrbitCamera.h>

#include <osgUtil/LineSegmentIntersector>
#include <osgViewer/GraphicsWindow>
#include <osgViewer/Viewer>

#include <QApplication>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vfApplication {

namespace {

/// How far the camera turns for each of the widget's units, in degrees.
constexpr double orbitRate = 0.2;

/// The factor of one notch of the wheel, and the most notches that one event is taken for.
constexpr double wheelFactor = 1.2;
constexpr double wheelNotch = 120;
constexpr double mostNotches = 4;

/// A drag of that many units halves or doubles the distance.
constexpr double zoomDrag = 100;

// How near to and how far from what it zooms to the camera may be, in radii of the scene. The nearest is what the depth buffer
// can still show without cutting the surface open.
constexpr double nearestInRadii = 5e-4;
constexpr double farthestInRadii = 50;
constexpr double nearToFar = 1e-4;

/// What a drag does.
enum class Drag
{
    None,
    Orbit,
    Pan,
    Zoom
};

/// Each button does one thing. Modifiers are for mice with one button and for touchpads.
Drag dragOf(Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (button == Qt::LeftButton && modifiers.testFlag(Qt::ShiftModifier))
        return Drag::Pan;
    if (button == Qt::LeftButton && modifiers.testFlag(Qt::ControlModifier))
        return Drag::Zoom;
    switch (button) {
    case Qt::LeftButton:
        return Drag::Orbit;
    case Qt::MiddleButton:
        return Drag::Pan;
    case Qt::RightButton:
        return Drag::Zoom;
    default:
        return Drag::None;
    }
}

/// Returns the number that OpenSceneGraph has for a drag's button.
unsigned int buttonOf(Drag drag)
{
    return static_cast<unsigned int>(drag);
}

} // namespace

struct QtViewportPrivate
{
    osg::ref_ptr<osgViewer::Viewer> viewer = new osgViewer::Viewer;
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window;
    OrbitCamera camera;
    double orbitSpeed = 1;
    osg::ref_ptr<osg::Group> root = new osg::Group;
    osg::ref_ptr<osg::Camera> background;
    osg::ref_ptr<osg::Node> scene;
    QMetaObject::Connection contextGoes;
    double fieldOfView = 30;
    bool isOrthographic = false;
    bool isContinuous = true;
    int width = 1; // in pixels
    int height = 1;
    unsigned int frames = 0;
    Drag drag = Drag::None; ///< the present one
    QPointF pressed;
    QPointF last;    ///< where the pointer was when the drag was last followed
    osg::Vec3d grip; ///< the point of the scene that the drag holds
    bool isClick = false;
    bool isDragging = false;
    QtViewport::Pick pick;                ///< empty for the viewport's own
    std::optional<QPointF> wheelPosition; ///< where the wheel was turned last
    osg::Vec3d wheelAnchor;               ///< the point of the scene there

    /// Forgets the point that the wheel zooms to: the scene or the camera is another one.
    void forgetAnchor() { wheelPosition.reset(); }

    /// Positions of events are relative to the graphics window; before there is one no input arrives.
    osgGA::EventQueue* events() const { return window ? window->getEventQueue() : viewer->getEventQueue(); }
};

QtViewport::QtViewport(QWidget* parent) : QOpenGLWidget(parent), d(std::make_unique<QtViewportPrivate>())
{
    QSurfaceFormat wanted = format();
    wanted.setSamples(4);
    wanted.setDepthBufferSize(24);
    setFormat(wanted);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(16, 16);

    osgViewer::Viewer& viewer = *d->viewer;
    viewer.setThreadingModel(osgViewer::Viewer::SingleThreaded);
    viewer.setRunFrameScheme(osgViewer::ViewerBase::ON_DEMAND);
    viewer.setKeyEventSetsDone(0);
    viewer.setReleaseContextAtEndOfFrameHint(false);
    viewer.setLightingMode(osg::View::NO_LIGHT);
    viewer.getCamera()->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    viewer.getCamera()->setNearFarRatio(nearToFar);
    setBackground({0.86f, 0.90f, 0.95f}, {0.56f, 0.64f, 0.72f});
    viewer.setSceneData(d->root);
    forbidPaging(viewer);
    updateProjection();
}

QtViewport::~QtViewport()
{
    QObject::disconnect(d->contextGoes);
    releaseContext();
}

void QtViewport::setScene(osg::Node* scene)
{
    if (scene == d->scene)
        return;
    if (d->scene)
        d->root->removeChild(d->scene);
    if (d->scene && d->window && context()) {
        makeCurrent();
        d->scene->releaseGLObjects(d->window->getState());
        doneCurrent();
    }
    d->scene = scene;
    d->forgetAnchor();
    if (scene)
        d->root->addChild(scene);
    update();
}

osg::Node* QtViewport::getScene() const
{
    return d->scene;
}

void QtViewport::setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
{
    if (d->background)
        d->root->removeChild(d->background);
    d->background = makeGradientBackground(top, bottom);
    d->root->insertChild(0, d->background);
    d->viewer->getCamera()->setClearColor({bottom, 1});
    update();
}

void QtViewport::setFieldOfView(double degrees)
{
    d->fieldOfView = degrees;
    updateProjection();
    update();
}

void QtViewport::setOrthographic(bool isOrthographic)
{
    d->isOrthographic = isOrthographic;
    updateProjection();
    update();
}

bool QtViewport::isOrthographic() const
{
    return d->isOrthographic;
}

void QtViewport::lookAt(const osg::Vec3d& eye, const osg::Vec3d& centre, const osg::Vec3d& up)
{
    d->camera.lookAt(eye, centre, up);
    d->forgetAnchor();
    update();
}

void QtViewport::getLookAt(osg::Vec3d& eye, osg::Vec3d& centre, osg::Vec3d& up) const
{
    eye = d->camera.eye();
    centre = d->camera.centre();
    up = d->camera.up();
}

void QtViewport::setPivot(const osg::Vec3d& pivot)
{
    d->camera.setPivot(pivot);
}

osg::Vec3d QtViewport::getPivot() const
{
    return d->camera.pivot();
}

void QtViewport::setOrbit(Orbit orbit)
{
    d->camera.setStyle(orbit == Orbit::Trackball ? OrbitCamera::Style::Trackball
                                                 : OrbitCamera::Style::Turntable);
}

QtViewport::Orbit QtViewport::getOrbit() const
{
    return d->camera.style() == OrbitCamera::Style::Trackball ? Orbit::Trackball : Orbit::Turntable;
}

void QtViewport::setOrbitSpeed(double factor)
{
    d->orbitSpeed = factor;
}

void QtViewport::setUpAxis(const osg::Vec3d& axis)
{
    d->camera.setUpAxis(axis);
}

void QtViewport::setPick(Pick pick)
{
    d->pick = std::move(pick);
}

void QtViewport::fit()
{
    osg::Vec3d eye;
    osg::Vec3d centre;
    osg::Vec3d up;
    getLookAt(eye, centre, up);
    const osg::BoundingSphere bounds = d->scene ? d->scene->getBound() : osg::BoundingSphere();
    if (!bounds.valid() || bounds.radius() <= 0)
        return;
    osg::Vec3d back = eye - centre;
    if (back.normalize() == 0)
        back = {0, -1, 0};
    // The narrower of the two angles has to hold the sphere.
    const double upright = 0.5 * osg::DegreesToRadians(d->fieldOfView);
    const double across = std::atan(std::tan(upright) * getAspect());
    const double angle = std::min(upright, across);
    const double distance = double(bounds.radius()) / (d->isOrthographic ? std::tan(angle) : std::sin(angle));
    lookAt(osg::Vec3d(bounds.center()) + back * distance, bounds.center(), up);
}

double QtViewport::getAspect() const
{
    return width() > 0 && height() > 0 ? double(width()) / height() : 1.0;
}

void QtViewport::setContinuous(bool isContinuous)
{
    d->isContinuous = isContinuous;
    update();
}

bool QtViewport::isContinuous() const
{
    return d->isContinuous;
}

unsigned int QtViewport::getFrameCount() const
{
    return d->frames;
}

osgViewer::Viewer& QtViewport::getViewer() const
{
    return *d->viewer;
}

QPointF QtViewport::inPixels(const QPointF& position) const
{
    return position * devicePixelRatioF();
}

void QtViewport::updateSize()
{
    const int width = std::max(1, int(std::lround(QOpenGLWidget::width() * devicePixelRatioF())));
    const int height = std::max(1, int(std::lround(QOpenGLWidget::height() * devicePixelRatioF())));
    if (width == d->width && height == d->height)
        return;
    d->width = width;
    d->height = height;
    if (d->window) {
        d->window->resized(0, 0, width, height);
        d->window->getEventQueue()->windowResize(0, 0, width, height);
    }
    updateProjection();
    Q_EMIT aspectChanged();
}

void QtViewport::updateProjection()
{
    osg::Camera& camera = *d->viewer->getCamera();
    camera.setViewport(0, 0, d->width, d->height);
    // Near and far planes follow the scene.
    const double aspect = double(d->width) / d->height;
    if (!d->isOrthographic) {
        camera.setProjectionMatrixAsPerspective(d->fieldOfView, aspect, 1.0, 10.0);
        return;
    }
    const double height = d->camera.distance() * std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
    camera.setProjectionMatrixAsOrtho(-height * aspect, height * aspect, -height, height, 1.0, 10.0);
}

void QtViewport::initializeGL()
{
    d->window = new osgViewer::GraphicsWindowEmbedded(0, 0, d->width, d->height);
    d->viewer->getCamera()->setGraphicsContext(d->window);
    d->width = 0; // has everything set for the new window
    updateSize();
    // A widget that goes to another window gets another context.
    d->contextGoes = connect(context(), &QOpenGLContext::aboutToBeDestroyed, this,
                             &QtViewport::releaseContext, Qt::DirectConnection);
}

void QtViewport::releaseContext()
{
    if (!d->window)
        return;
    makeCurrent();
    d->root->releaseGLObjects(d->window->getState());
    d->viewer->getCamera()->releaseGLObjects(d->window->getState());
    d->viewer->getCamera()->setGraphicsContext(nullptr);
    d->window->close();
    d->window = nullptr;
    doneCurrent();
}

void QtViewport::paintGL()
{
    updateSize();
    if (d->isOrthographic)
        updateProjection(); // which depends on how near the user has come
    d->viewer->getCamera()->setViewMatrix(d->camera.toCamera());
    d->window->setDefaultFboId(defaultFramebufferObject());
    d->viewer->frame();
    ++d->frames;
    // A scene that moves by itself goes on.
    if (d->isContinuous && d->viewer->checkNeedToDoFrame())
        update();
}

std::optional<osg::Vec3d> QtViewport::pointAt(const QPointF& position) const
{
    const std::optional<Hit> hit = d->pick ? d->pick(position) : pick(position);
    return hit ? std::optional<osg::Vec3d>(hit->point) : std::nullopt;
}

osg::Vec3d QtViewport::atDepth(const QPointF& position, double depth) const
{
    osg::Vec3d origin;
    osg::Vec3d direction;
    getRay(position, origin, direction);
    const double slope = direction * d->camera.ahead();
    return origin + direction * ((depth - d->camera.depthOf(origin)) / slope);
}

osg::Vec3d QtViewport::anchorAt(const QPointF& position) const
{
    if (const std::optional<osg::Vec3d> point = pointAt(position))
        return *point;
    const double depth = d->camera.depthOf(d->camera.pivot());
    return atDepth(position, depth > 0 ? depth : d->camera.distance());
}

void QtViewport::zoom(double factor, const osg::Vec3d& anchor)
{
    const osg::BoundingSphere bounds = d->scene ? d->scene->getBound() : osg::BoundingSphere();
    const double radius = bounds.valid() && bounds.radius() > 0 ? double(bounds.radius()) : 1;
    d->camera.zoom(factor, anchor, {nearestInRadii * radius, farthestInRadii * radius});
}

void QtViewport::beginDrag()
{
    switch (d->drag) {
    case Drag::Orbit:
        if (const std::optional<osg::Vec3d> point = pointAt(d->pressed))
            d->camera.setPivot(*point);
        break;
    case Drag::Pan:
    case Drag::Zoom:
        d->grip = anchorAt(d->pressed);
        break;
    case Drag::None:
        break;
    }
    d->last = d->pressed;
    d->forgetAnchor();
}

void QtViewport::followDrag(const QPointF& position)
{
    const QPointF moved = position - d->last;
    switch (d->drag) {
    case Drag::Orbit: {
        const double rate = orbitRate * d->orbitSpeed;
        d->camera.orbit(moved.x() * rate, moved.y() * rate);
        break;
    }
    case Drag::Pan: {
        // What was grabbed stays under the pointer.
        const double depth = d->camera.depthOf(d->grip);
        d->camera.pan(atDepth(d->last, depth) - atDepth(position, depth));
        break;
    }
    case Drag::Zoom:
        zoom(std::exp2(-moved.y() / zoomDrag), d->grip);
        break;
    case Drag::None:
        break;
    }
    d->last = position;
    update();
    Q_EMIT cameraMoved();
}

void QtViewport::mousePressEvent(QMouseEvent* event)
{
    const Drag drag = dragOf(event->button(), event->modifiers());
    if (drag == Drag::None || d->drag != Drag::None) {
        event->ignore();
        return;
    }
    d->drag = drag;
    d->pressed = event->position();
    d->isClick = true;
    const QPointF at = inPixels(event->position());
    d->events()->mouseButtonPress(float(at.x()), float(at.y()), buttonOf(drag));
    event->accept();
}

void QtViewport::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
    if (d->drag == Drag::Orbit && event->button() == Qt::LeftButton)
        Q_EMIT doubleClicked(event->position(), event->button(), event->modifiers());
}

void QtViewport::mouseMoveEvent(QMouseEvent* event)
{
    if (d->drag == Drag::None) {
        event->ignore();
        return;
    }
    // A hand that clicks is not quite still.
    const QPointF moved = event->position() - d->pressed;
    if (d->isClick && moved.manhattanLength() < QGuiApplication::styleHints()->startDragDistance() / 2.0)
        return;
    if (!d->isDragging)
        beginDrag();
    d->isClick = false;
    d->isDragging = true;
    const QPointF at = inPixels(event->position());
    d->events()->mouseMotion(float(at.x()), float(at.y()));
    followDrag(event->position());
}

void QtViewport::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointF at = inPixels(event->position());
    if (d->drag != Drag::None && event->buttons() == Qt::NoButton) {
        d->events()->mouseButtonRelease(float(at.x()), float(at.y()), buttonOf(d->drag));
        d->drag = Drag::None;
        d->isDragging = false;
        update();
        if (std::exchange(d->isClick, false))
            Q_EMIT clicked(event->position(), event->button(), event->modifiers());
    }
    event->accept();
}

void QtViewport::wheelEvent(QWheelEvent* event)
{
    const int turned = event->angleDelta().y();
    if (turned == 0) {
        event->ignore();
        return;
    }
    // One look at the scene for all steps in one place: each may take a while in a large model.
    if (!d->wheelPosition || *d->wheelPosition != event->position()) {
        d->wheelAnchor = anchorAt(event->position());
        d->wheelPosition = event->position();
    }
    const double notches = std::clamp(turned / wheelNotch, -mostNotches, mostNotches);
    zoom(std::pow(wheelFactor, -notches), d->wheelAnchor);
    d->events()->mouseScroll(turned > 0 ? osgGA::GUIEventAdapter::SCROLL_UP
                                        : osgGA::GUIEventAdapter::SCROLL_DOWN);
    update();
    Q_EMIT cameraMoved();
    event->accept();
}

void QtViewport::getRay(const QPointF& position, osg::Vec3d& origin, osg::Vec3d& direction) const
{
    // Through the middle of the pixel.
    const QPointF at = inPixels(position);
    const double upright = std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
    const double x = (2.0 * (at.x() + 0.5) / d->width - 1.0) * upright * d->width / d->height;
    const double y = (1.0 - 2.0 * (at.y() + 0.5) / d->height) * upright;
    const osg::Matrixd toScene = d->camera.toScene();
    const double distance = d->camera.distance();
    origin = (d->isOrthographic ? osg::Vec3d(x * distance, y * distance, 0) : osg::Vec3d()) * toScene;
    direction =
        osg::Matrixd::transform3x3(d->isOrthographic ? osg::Vec3d(0, 0, -1) : osg::Vec3d(x, y, -1), toScene);
    direction.normalize();
}

QPointF QtViewport::project(const osg::Vec3d& point) const
{
    const osg::Vec3d seen = point * d->camera.toCamera();
    const double upright = std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
    const double depth = d->isOrthographic ? d->camera.distance() : std::max(-seen.z(), 1e-9);
    const double half = 0.5 * height();
    return {0.5 * width() + seen.x() / (depth * upright) * half, half - seen.y() / (depth * upright) * half};
}

std::optional<QtViewport::Hit> QtViewport::pick(const QPointF& position) const
{
    return pick(position, nullptr);
}

std::optional<QtViewport::Hit> QtViewport::pick(const QPointF& position,
                                                const std::function<bool(const Hit&)>& isWanted) const
{
    const osg::BoundingSphere bounds = d->scene ? d->scene->getBound() : osg::BoundingSphere();
    if (!bounds.valid())
        return std::nullopt;
    osg::Vec3d eye;
    osg::Vec3d ahead;
    getRay(position, eye, ahead);
    // From the eye to behind all there is; without perspective, from in front of all there is.
    const double reach = (osg::Vec3d(bounds.center()) - eye).length() + 2.0 * double(bounds.radius());
    const osg::Vec3d start = d->isOrthographic ? eye - ahead * reach : eye;
    const osg::ref_ptr<osgUtil::LineSegmentIntersector> ray =
        new osgUtil::LineSegmentIntersector(start, eye + ahead * reach);
    ray->setIntersectionLimit(isWanted ? osgUtil::Intersector::NO_LIMIT
                                       : osgUtil::Intersector::LIMIT_NEAREST);
    osgUtil::IntersectionVisitor visitor(ray);
    d->scene->accept(visitor);
    for (const osgUtil::LineSegmentIntersector::Intersection& found : ray->getIntersections()) {
        Hit hit{found.nodePath, found.getWorldIntersectPoint(), found.getWorldIntersectNormal()};
        // The visitor passes a geode's drawables over.
        if (found.drawable && (hit.path.empty() || hit.path.back() != found.drawable))
            hit.path.push_back(found.drawable.get());
        if (!isWanted || isWanted(hit))
            return hit;
    }
    return std::nullopt;
}

} // namespace vfApplication
