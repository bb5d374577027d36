// SPDX-License-Identifier: MIT
#include <velaforge/qt/QtViewport.h>

#include <velaforge/toolkit/GradientBackground.h>

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
    viewer.setCameraManipulator(d->manipulator, false);
    viewer.getCamera()->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    setBackground({0.86f, 0.90f, 0.95f}, {0.56f, 0.64f, 0.72f});
    viewer.setSceneData(d->root);
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
    const double distance = double(bounds.radius()) / std::sin(std::min(upright, across));
    lookAt(osg::Vec3d(bounds.center()) + back * distance, bounds.center(), up);
}

double QtViewport::getAspect() const
{
    return width() > 0 && height() > 0 ? double(width()) / height() : 1.0;
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
    camera.setProjectionMatrixAsPerspective(d->fieldOfView, double(d->width) / d->height, 1.0, 10.0);
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
    d->window->setDefaultFboId(defaultFramebufferObject());
    d->viewer->frame();
    ++d->frames;
    // A scene that moves by itself goes on.
    if (d->viewer->checkNeedToDoFrame())
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

std::optional<QtViewport::Hit> QtViewport::pick(const QPointF& position) const
{
    const osg::BoundingSphere bounds = d->scene ? d->scene->getBound() : osg::BoundingSphere();
    if (!bounds.valid())
        return std::nullopt;
    // From the eye through the middle of the pixel, to behind all there is.
    const QPointF at = inPixels(position);
    const double upright = std::tan(0.5 * osg::DegreesToRadians(d->fieldOfView));
    const osg::Vec3d direction((2.0 * (at.x() + 0.5) / d->width - 1.0) * upright * d->width / d->height,
                               (1.0 - 2.0 * (at.y() + 0.5) / d->height) * upright, -1.0);
    const osg::Matrixd toScene = d->manipulator->getMatrix();
    const osg::Vec3d eye = osg::Vec3d() * toScene;
    osg::Vec3d ahead = osg::Matrixd::transform3x3(direction, toScene);
    ahead.normalize();
    const double reach = (osg::Vec3d(bounds.center()) - eye).length() + 2.0 * double(bounds.radius());
    const osg::ref_ptr<osgUtil::LineSegmentIntersector> ray =
        new osgUtil::LineSegmentIntersector(eye, eye + ahead * reach);
    ray->setIntersectionLimit(osgUtil::Intersector::LIMIT_NEAREST);
    osgUtil::IntersectionVisitor visitor(ray);
    d->scene->accept(visitor);
    if (!ray->containsIntersections())
        return std::nullopt;
    const osgUtil::LineSegmentIntersector::Intersection& hit = ray->getFirstIntersection();
    return Hit{hit.nodePath, hit.getWorldIntersectPoint(), hit.getWorldIntersectNormal()};
}

} // namespace vfApplication
