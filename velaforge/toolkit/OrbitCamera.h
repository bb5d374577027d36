// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Matrixd>
#include <osg/Vec3d>

namespace vfApplication {

/// The position and orientation of a camera that the user moves around a scene.
///
/// Knows no toolkit and no OpenGL: its operations take angles, and points of the scene. Reading a camera and
/// setting the same values again changes nothing.
class OrbitCamera
{
public:
    /// How orbit() turns.
    enum class Style
    {
        Turntable, ///< sideways about the up axis, up and down about the camera's own horizontal axis, never past the poles
        Trackball ///< about the camera's own two axes, without a horizon
    };

    /// The bounds of zoom(), as distances from the point that is zoomed to.
    struct Limits
    {
        double nearest;
        double farthest;
    };

    /// Places the camera at @p eye, looking at @p centre, with @p up upwards. @p centre becomes the pivot. Where two of
    /// the points are equal, or @p up is parallel to the line of sight, chooses an orientation.
    void lookAt(const osg::Vec3d& eye, const osg::Vec3d& centre, const osg::Vec3d& up);

    /// Returns the position of the camera.
    const osg::Vec3d& eye() const { return m_eye; }

    /// Returns the point in the middle of the picture at distance().
    osg::Vec3d centre() const { return m_eye + m_ahead * m_distance; }

    /// Returns the direction that is upwards in the picture, of length 1.
    const osg::Vec3d& up() const { return m_up; }

    /// Returns the direction of the line of sight, of length 1.
    const osg::Vec3d& ahead() const { return m_ahead; }

    /// Returns the direction to the right in the picture, of length 1.
    osg::Vec3d right() const { return m_ahead ^ m_up; }

    /// Returns the distance of centre(). Without perspective the size of the picture is proportional to it.
    double distance() const { return m_distance; }

    /// Returns the matrix from the camera's coordinates to those of the scene.
    osg::Matrixd toScene() const;

    /// Returns the matrix from the coordinates of the scene to the camera's: a view matrix.
    osg::Matrixd toCamera() const;

    /// Sets how orbit() turns; Turntable unless set.
    void setStyle(Style style) { m_style = style; }

    /// Returns how orbit() turns.
    Style style() const { return m_style; }

    /// Sets the up axis of the turntable, of any length but 0; the z axis unless set.
    void setUpAxis(const osg::Vec3d& axis);

    /// Sets the point that orbit() turns about. It need not be in the middle of the picture.
    void setPivot(const osg::Vec3d& pivot) { m_pivot = pivot; }

    /// Returns the point that orbit() turns about.
    const osg::Vec3d& pivot() const { return m_pivot; }

    /// Turns about the pivot, as if the user moved the near side of the scene.
    /// @param right  the angle to the right, in degrees
    /// @param down   the angle downwards, in degrees. A turntable stops at the poles
    ///
    /// On a turntable a camera that is rolled, from a file for example, becomes upright as it turns, not at once.
    void orbit(double right, double down);

    /// Moves the camera, without turning it. The pivot stays in the scene.
    void pan(const osg::Vec3d& shift) { m_eye += shift; }

    /// Moves the camera on the line between it and @p anchor, which stays where it is in the picture.
    /// @param factor  the new distance from @p anchor, divided by the present one; limited so that the camera moves no further
    /// than to @p limits, and back from beyond them always
    void zoom(double factor, const osg::Vec3d& anchor, const Limits& limits);

    /// Returns the distance of @p point along the line of sight; negative behind the camera.
    double depthOf(const osg::Vec3d& point) const { return (point - m_eye) * m_ahead; }

private:
    void turnTo(const osg::Vec3d& ahead, const osg::Vec3d& up);

    osg::Vec3d m_eye{0, -1, 0};
    osg::Vec3d m_ahead{0, 1, 0};
    osg::Vec3d m_up{0, 0, 1};
    double m_distance = 1;
    osg::Vec3d m_pivot;
    osg::Vec3d m_upAxis{0, 0, 1};
    Style m_style = Style::Turntable;
};

} // namespace vfApplication
