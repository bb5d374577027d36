// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/OrbitCamera.h>

#include <osg/Math>
#include <osg/Quat>

#include <algorithm>
#include <cmath>

namespace vfApplication {

namespace {

/// So near to a pole, the heading is told by the camera's up direction rather than by its line of sight.
constexpr double nearPole = 1e-6;

/// A rolled camera becomes upright by so many degrees for each degree that it turns.
constexpr double uprightRate = 2;

osg::Vec3d normalized(osg::Vec3d vector)
{
    vector.normalize();
    return vector;
}

osg::Vec3d rotated(const osg::Vec3d& vector, double radians, const osg::Vec3d& axis)
{
    return osg::Quat(radians, axis) * vector;
}

/// Returns a direction that is at right angles to @p direction.
osg::Vec3d anyAcross(const osg::Vec3d& direction)
{
    const osg::Vec3d other = std::fabs(direction.z()) < 0.9 ? osg::Vec3d(0, 0, 1) : osg::Vec3d(0, 1, 0);
    return normalized(other - direction * (other * direction));
}

} // namespace

void OrbitCamera::lookAt(const osg::Vec3d& eye, const osg::Vec3d& centre, const osg::Vec3d& up)
{
    const osg::Vec3d sight = centre - eye;
    const double distance = sight.length();
    m_eye = eye;
    m_pivot = centre;
    if (distance > 0 && std::isfinite(distance)) {
        m_distance = distance;
        m_ahead = sight / distance;
    }
    const osg::Vec3d across = up - m_ahead * (up * m_ahead);
    m_up = across.length() > 1e-9 * up.length() ? normalized(across) : anyAcross(m_ahead);
}

osg::Matrixd OrbitCamera::toScene() const
{
    const osg::Vec3d x = right();
    return {x.x(),        x.y(),        x.z(),        0, m_up.x(),  m_up.y(),  m_up.z(),  0,
            -m_ahead.x(), -m_ahead.y(), -m_ahead.z(), 0, m_eye.x(), m_eye.y(), m_eye.z(), 1};
}

osg::Matrixd OrbitCamera::toCamera() const
{
    const osg::Vec3d x = right();
    return {x.x(), m_up.x(), -m_ahead.x(), 0, x.y(),        m_up.y(),        -m_ahead.y(),    0,
            x.z(), m_up.z(), -m_ahead.z(), 0, -(m_eye * x), -(m_eye * m_up), m_eye * m_ahead, 1};
}

void OrbitCamera::setUpAxis(const osg::Vec3d& axis)
{
    if (axis.length() > 0)
        m_upAxis = normalized(axis);
}

/// Turns the camera about the pivot into another orientation.
void OrbitCamera::turnTo(const osg::Vec3d& ahead, const osg::Vec3d& up)
{
    const osg::Vec3d fromPivot = m_eye - m_pivot;
    const double x = fromPivot * right();
    const double y = fromPivot * m_up;
    const double z = fromPivot * m_ahead;
    m_ahead = normalized(ahead);
    m_up = normalized(up - m_ahead * (up * m_ahead));
    m_eye = m_pivot + right() * x + m_up * y + m_ahead * z;
}

void OrbitCamera::orbit(double rightDegrees, double downDegrees)
{
    const double sideways = -osg::DegreesToRadians(rightDegrees);
    const double upwards = -osg::DegreesToRadians(downDegrees);
    if (m_style == Style::Trackball) {
        const osg::Vec3d axis = right();
        turnTo(rotated(rotated(m_ahead, upwards, axis), sideways, m_up),
               rotated(rotated(m_up, upwards, axis), sideways, m_up));
        return;
    }
    const double sine = std::clamp(m_ahead * m_upAxis, -1.0, 1.0);
    osg::Vec3d heading = m_ahead - m_upAxis * sine;
    if (heading.length() < nearPole) {
        heading = sine < 0 ? m_up : -m_up;
        heading -= m_upAxis * (heading * m_upAxis);
    }
    heading.normalize();
    const double elevation = std::atan2(sine, m_ahead * heading);
    const osg::Vec3d level = heading ^ m_upAxis;
    const double roll = std::atan2(right() * (level ^ m_ahead), right() * level);

    const double straightened = uprightRate * std::hypot(sideways, upwards);
    const double newRoll = std::copysign(std::max(0.0, std::fabs(roll) - straightened), roll);
    const double newElevation = std::clamp(elevation + upwards, -osg::PI_2, osg::PI_2);
    const osg::Vec3d newHeading = rotated(heading, sideways, m_upAxis);
    const osg::Vec3d ahead = newHeading * std::cos(newElevation) + m_upAxis * std::sin(newElevation);
    const osg::Vec3d upright = (newHeading ^ m_upAxis) ^ ahead;
    turnTo(ahead, rotated(upright, -newRoll, ahead));
}

void OrbitCamera::zoom(double factor, const osg::Vec3d& anchor, const Limits& limits)
{
    const double before = (m_eye - anchor).length();
    if (!(factor > 0) || !(before > 0) || !std::isfinite(factor))
        return;
    const double wanted = before * factor;
    const double after = factor < 1 ? std::max(wanted, std::min(before, limits.nearest))
                                    : std::min(wanted, std::max(before, limits.farthest));
    const double limited = after / before;
    m_eye = anchor + (m_eye - anchor) * limited;
    m_distance *= limited;
}

} // namespace vfApplication
