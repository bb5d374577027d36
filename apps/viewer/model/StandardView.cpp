// SPDX-License-Identifier: MIT
#include "model/StandardView.h"

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/TriangleFunctor>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vfViewer {

namespace {

struct Directions
{
    osg::Vec3d toEye;
    osg::Vec3d up;
};

Directions directionsOf(StandardView view)
{
    const osg::Vec3d up(0, 0, 1);
    switch (view) {
    case StandardView::Front:
        return {{0, -1, 0}, up};
    case StandardView::Back:
        return {{0, 1, 0}, up};
    case StandardView::Left:
        return {{-1, 0, 0}, up};
    case StandardView::Right:
        return {{1, 0, 0}, up};
    case StandardView::Top:
        return {{0, 0, 1}, {0, 1, 0}};
    case StandardView::Bottom:
        return {{0, 0, -1}, {0, -1, 0}};
    case StandardView::FrontLeft:
        return {{-1, -1.3, 0.62}, up};
    case StandardView::FrontRight:
        return {{1, -1.3, 0.62}, up};
    case StandardView::BackRight:
        return {{1, 1.3, 0.62}, up};
    case StandardView::BackLeft:
        return {{-1, 1.3, 0.62}, up};
    }
    return {{0, -1, 0}, up};
}

/// What of a scene is to be in the picture, seen along an axis: the smallest pyramid with its tip on the camera's side
/// that holds every point. For one axis of the picture the tip must lie at or above the highest of the lines that run
/// through the points with the slope of the pyramid's sides, once to the left and once to the right.
class Frame
{
public:
    Frame(const Directions& directions, double tangentX, double tangentY)
        : m_back(directions.toEye), m_tangentX(tangentX), m_tangentY(tangentY)
    {
        m_back.normalize();
        m_right = directions.up ^ m_back;
        m_right.normalize();
        m_up = m_back ^ m_right;
    }

    void add(const osg::Vec3d& point)
    {
        const double z = point * m_back;
        const double x = point * m_right;
        const double y = point * m_up;
        if (!std::isfinite(x + y + z))
            return;
        m_highest[0] = std::max(m_highest[0], z + x / m_tangentX);
        m_highest[1] = std::max(m_highest[1], z - x / m_tangentX);
        m_highest[2] = std::max(m_highest[2], z + y / m_tangentY);
        m_highest[3] = std::max(m_highest[3], z - y / m_tangentY);
        m_nearest = std::max(m_nearest, z);
        m_farthest = std::min(m_farthest, z);
        m_isEmpty = false;
    }

    bool isEmpty() const { return m_isEmpty; }

    osg::Matrixd viewMatrix() const
    {
        const double x = 0.5 * m_tangentX * (m_highest[0] - m_highest[1]);
        const double y = 0.5 * m_tangentY * (m_highest[2] - m_highest[3]);
        double distance = std::max(0.5 * (m_highest[0] + m_highest[1]), 0.5 * (m_highest[2] + m_highest[3]));
        // A point, or a line seen end on, would put the eye onto itself.
        const double size = std::max({m_nearest - m_farthest, std::fabs(m_nearest) * 1e-6, 1e-6});
        distance = std::max(distance, m_nearest + 0.01 * size);
        const osg::Vec3d eye = m_right * x + m_up * y + m_back * distance;
        osg::Matrixd matrix;
        matrix.makeLookAt(eye, eye - m_back, m_up);
        return matrix;
    }

private:
    osg::Vec3d m_back;
    osg::Vec3d m_right;
    osg::Vec3d m_up;
    double m_tangentX;
    double m_tangentY;
    double m_highest[4] = {std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(),
                           std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};
    double m_nearest = std::numeric_limits<double>::lowest();
    double m_farthest = std::numeric_limits<double>::max();
    bool m_isEmpty = true;
};

/// Goes over all points that are drawn; where a drawable is no plain geometry, over the corners of its box.
class AddPoints : public osg::NodeVisitor
{
public:
    explicit AddPoints(Frame& frame) : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN), m_frame(frame) {}

    void apply(osg::Drawable& drawable) override { addBox(drawable); }

    void apply(osg::Geometry& geometry) override
    {
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!points) {
            addBox(geometry);
            return;
        }
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        for (const osg::Vec3& point : *points)
            m_frame.add(osg::Vec3d(point) * toWorld);
    }

private:
    void addBox(osg::Drawable& drawable)
    {
        const osg::BoundingBox& box = drawable.getBoundingBox();
        if (!box.valid())
            return;
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        for (unsigned int i = 0; i < 8; ++i)
            m_frame.add(osg::Vec3d(box.corner(i)) * toWorld);
    }

    Frame& m_frame;
};

} // namespace

CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect)
{
    constexpr double heightAngle = 30.0; // degrees from the bottom to the top of the picture
    constexpr double filled = 0.90;      // of the picture, so that the model does not touch the edges
    const double tangentY = std::tan(0.5 * osg::DegreesToRadians(heightAngle));
    Frame frame(directionsOf(view), filled * tangentY * aspect, filled * tangentY);
    AddPoints points(frame);
    scene.accept(points);
    if (frame.isEmpty()) {
        frame.add({-1, -1, -1});
        frame.add({1, 1, 1});
    }
    return {frame.viewMatrix(), osg::Matrixd::perspective(heightAngle, aspect, 1.0, 10.0)};
}

} // namespace vfViewer
