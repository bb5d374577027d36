// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QOpenGLWidget>

#include <osg/Matrixd>
#include <osg/Node>
#include <osg/Vec3d>
#include <osg/Vec3f>

#include <functional>
#include <memory>
#include <optional>

namespace osgViewer {
class Viewer;
}

namespace vfApplication {

struct QtViewportPrivate;

/// Shows a scene of OpenSceneGraph, to be turned and moved with the mouse.
///
///     auto* viewport = new vfApplication::QtViewport(&parent);
///     viewport->setScene(scene);
///     viewport->lookAt(eye, centre, up);
///
/// The left button orbits about the point under the pointer, and about the pivot where the pointer is beside the scene. The
/// middle button (or the left with Shift) pans: the point under the pointer stays there. The right button (or the left with
/// Control) and the wheel zoom to the point under the pointer, never through it. It draws when something has changed:
/// after update(), when the user moves the camera, and, where that is wanted, as long as the scene moves by
/// itself. Positions are those of the widget, in Qt's own units; the picture has as many pixels as the screen
/// has.
class VFAPPLICATIONQT_EXPORT QtViewport : public QOpenGLWidget
{
    Q_OBJECT

public:
    /// What lies under a position.
    struct Hit
    {
        osg::NodePath path; ///< from the scene to the drawable
        osg::Vec3d point;   ///< in the scene
        osg::Vec3d normal;  ///< of the surface there, in the scene
    };

    /// A function that finds what is under a position; nothing for the background.
    using Pick = std::function<std::optional<Hit>(const QPointF& position)>;

    /// How a drag with the left button turns.
    enum class Orbit
    {
        Turntable, ///< about the up axis and the horizontal axis of the picture: what is upright stays so
        Trackball  ///< about the axes of the picture
    };

    /// Makes a viewport without a scene, as a child of @p parent.
    explicit QtViewport(QWidget* parent = nullptr);
    ~QtViewport() override;

    /// Shows @p scene, which is shared; null shows none. Does not move the camera. Files that the scene names to
    /// be loaded while it is shown, as osg::PagedLOD does, are not loaded: set a pager of getViewer() for that.
    void setScene(osg::Node* scene);

    /// Returns the scene, null if there is none.

    osg::Node* getScene() const;

    /// The colours at the top and the bottom of the background, from 0 to 1.
    void setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

    /// The angle from the bottom to the top of the picture, in degrees; 30 unless set.
    void setFieldOfView(double degrees);

    /// Without perspective, what lies at the centre about which the user turns is as large as with it. False
    /// unless set.
    void setOrthographic(bool isOrthographic);

    /// Returns whether the camera has no perspective.
    bool isOrthographic() const;

    /// Places the camera at @p eye, looking at @p centre, with @p up pointing upwards. @p centre becomes the pivot.
    void lookAt(const osg::Vec3d& eye, const osg::Vec3d& centre, const osg::Vec3d& up);

    /// Sets @p eye, @p centre and @p up to the values of the camera.
    void getLookAt(osg::Vec3d& eye, osg::Vec3d& centre, osg::Vec3d& up) const;

    /// Sets the point that the user orbits about when the drag begins beside the scene. A drag that begins on the scene sets
    /// it, too.
    void setPivot(const osg::Vec3d& pivot);

    /// Returns the point that the user orbits about.
    osg::Vec3d getPivot() const;

    /// Sets how the user orbits; Turntable unless set.
    void setOrbit(Orbit orbit);

    /// Returns how the user orbits.
    Orbit getOrbit() const;

    /// Sets the speed of orbiting; 1, unless set, is a fifth of a degree for each of the widget's units.
    void setOrbitSpeed(double factor);

    /// Sets the axis of the turntable; the z axis unless set.
    void setUpAxis(const osg::Vec3d& axis);

    /// Sets what the mouse takes for the point under the pointer, where not all of the scene counts; empty for pick().
    void setPick(Pick pick);

    /// Looks at the whole scene from where the camera looks now.
    void fit();

    /// @return width divided by height; 1 for a widget without a size
    double getAspect() const;

    /// @return what lies foremost under the position, nothing where there is only background
    std::optional<Hit> pick(const QPointF& position) const;

    /// Does the same, but looks through each hit for which @p isWanted returns false. @p position is in the
    /// widget.
    /// @return the foremost hit that is wanted
    std::optional<Hit> pick(const QPointF& position, const std::function<bool(const Hit&)>& isWanted) const;

    /// @return where the point of the scene is seen, in the widget; behind the camera that is nowhere near
    QPointF project(const osg::Vec3d& point) const;

    /// Sets @p origin and @p direction, a vector of length 1, to the line of sight through @p position.
    void getRay(const QPointF& position, osg::Vec3d& origin, osg::Vec3d& direction) const;

    /// Whether pictures follow one another for as long as something in the scene moves by itself; true unless
    /// set.
    void setContinuous(bool isContinuous);

    /// Returns whether pictures follow one another as long as something in the scene moves by itself.
    bool isContinuous() const;

    /// @return how many pictures were drawn
    unsigned int getFrameCount() const;

    /// For what is not offered here. Its camera, its window and its frames are the viewport's.
    osgViewer::Viewer& getViewer() const;

Q_SIGNALS:
    /// A button was pressed and let go in one place.
    void clicked(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    /// The left button was pressed for the second time in one place, soon after clicked(), which follows once more when it is
    /// released.
    void doubleClicked(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

    /// The user moved the camera.
    void cameraMoved();

    /// The shape of the picture has changed, and it is about to be drawn.
    void aspectChanged();

protected:
    /// Prepares the OpenGL context.
    void initializeGL() override;

    /// Draws the scene.
    void paintGL() override;

    /// Begins a movement of the camera.
    void mousePressEvent(QMouseEvent* event) override;

    /// Moves the camera.
    void mouseMoveEvent(QMouseEvent* event) override;

    /// Emits doubleClicked().
    void mouseDoubleClickEvent(QMouseEvent* event) override;

    /// Ends a movement of the camera, or emits clicked().
    void mouseReleaseEvent(QMouseEvent* event) override;

    /// Zooms.
    void wheelEvent(QWheelEvent* event) override;

private:
    void releaseContext();
    void updateSize();
    void updateProjection();
    QPointF inPixels(const QPointF& position) const;
    std::optional<osg::Vec3d> pointAt(const QPointF& position) const;
    osg::Vec3d atDepth(const QPointF& position, double depth) const;
    osg::Vec3d anchorAt(const QPointF& position) const;
    void zoom(double factor, const osg::Vec3d& anchor);
    void beginDrag();
    void followDrag(const QPointF& position);

    std::unique_ptr<QtViewportPrivate> d;
};

} // namespace vfApplication
