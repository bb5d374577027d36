// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtViewport.h>

#include <velaforge/toolkit/GradientBackground.h>
#include <velaforge/toolkit/NoPaging.h>

#include <osgGA/TrackballManipulator>
#include <osgUtil/LineSegmentIntersector>
#include <osgViewer/GraphicsWindow>
#include <osgViewer/Viewer>

#include <QApplication>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QStyleHints>
#include <QWheelEvent>

#include <cmath>

namespace vfApplication {

namespace {

/// Each button does one thing, with modifiers for those who have but one button.
int navigationButton(Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (button == Qt::LeftButton && modifiers.testFlag(Qt::ShiftModifier))
        return 2;
    if (button == Qt::LeftButton && modifiers.testFlag(Qt::ControlModifier))
        return 3;
    switch (button) {
    case Qt::LeftButton:
        return 1;
    case Qt::MiddleButton:
        return 2;
    case Qt::RightButton:
        return 3;
    default:
        return 0;
    }
}

} // namespace

struct QtViewportPrivate
{
    osg::ref_ptr<osgViewer::Viewer> viewer = new osgViewer::Viewer;
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window;
    osg::ref_ptr<osgGA::TrackballManipulator> manipulator = new osgGA::TrackballManipulator;
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
    int button = 0; ///< as OpenSceneGraph counts, of the drag that is going on
    QPointF pressed;
    bool isClick = false;

    /// Events of the window are told in its size; before there is a window nobody can press anything.
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
    d->manipulator->setAllowThrow(false); // a view that drifts on cannot be placed
    d->manipulator->setMinimumDistance(1e-4, true);
    d->manipulator->setWheelZoomFactor(-d->manipulator->getWheelZoomFactor()); // away from the user is nearer
    viewer.setCameraManipulator(d->manipulator, false);
    viewer.getCamera()->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
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
    d->manipulator->setTransformation(eye, centre, up);
    update();
}

void QtViewport::getLookAt(osg::Vec3d& eye, osg::Vec3d& centre, osg::Vec3d& up) const
{
    d->manipulator->getTransformation(eye, centre, up);
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
    const double height =
        d->manipulator->getDistance() * std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
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
    d->window->setDefaultFboId(defaultFramebufferObject());
    d->viewer->frame();
    ++d->frames;
    // A scene that moves by itself goes on.
    if (d->isContinuous && d->viewer->checkNeedToDoFrame())
        update();
}

void QtViewport::mousePressEvent(QMouseEvent* event)
{
    const int button = navigationButton(event->button(), event->modifiers());
    if (button == 0 || d->button != 0) {
        event->ignore();
        return;
    }
    d->button = button;
    d->pressed = event->position();
    d->isClick = true;
    const QPointF at = inPixels(event->position());
    d->events()->mouseButtonPress(float(at.x()), float(at.y()), unsigned(button));
    event->accept();
}

void QtViewport::mouseMoveEvent(QMouseEvent* event)
{
    if (d->button == 0) {
        event->ignore();
        return;
    }
    // A hand that clicks is not quite still.
    const QPointF moved = event->position() - d->pressed;
    if (d->isClick && moved.manhattanLength() < QGuiApplication::styleHints()->startDragDistance() / 2.0)
        return;
    d->isClick = false;
    const QPointF at = inPixels(event->position());
    d->events()->mouseMotion(float(at.x()), float(at.y()));
    update();
    Q_EMIT cameraMoved();
}

void QtViewport::mouseReleaseEvent(QMouseEvent* event)
{
    const QPointF at = inPixels(event->position());
    if (d->button != 0 && event->buttons() == Qt::NoButton) {
        d->events()->mouseButtonRelease(float(at.x()), float(at.y()), unsigned(d->button));
        d->button = 0;
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
    const osg::Matrixd toScene = d->manipulator->getMatrix();
    const double distance = d->manipulator->getDistance();
    origin = (d->isOrthographic ? osg::Vec3d(x * distance, y * distance, 0) : osg::Vec3d()) * toScene;
    direction =
        osg::Matrixd::transform3x3(d->isOrthographic ? osg::Vec3d(0, 0, -1) : osg::Vec3d(x, y, -1), toScene);
    direction.normalize();
}

QPointF QtViewport::project(const osg::Vec3d& point) const
{
    const osg::Vec3d seen = point * d->manipulator->getInverseMatrix();
    const double upright = std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
    const double depth = d->isOrthographic ? d->manipulator->getDistance() : std::max(-seen.z(), 1e-9);
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
        const Hit hit{found.nodePath, found.getWorldIntersectPoint(), found.getWorldIntersectNormal()};
        if (!isWanted || isWanted(hit))
            return hit;
    }
    return std::nullopt;
}

} // namespace vfApplication
