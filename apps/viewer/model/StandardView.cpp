// SPDX-License-Identifier: MIT
#include "model/StandardView.h"

#include "model/Outline.h"

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
/// through the points with the slope of the pyramid's sides, once to the left and once to the right. The axis that needs
/// the greater distance is centred by that; the other is centred for that distance step by step, since the middle of
/// what is seen shifts with it.
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

    /// Places the eye, once all points are added.
    void place()
    {
        m_x = 0.5 * m_tangentX * (m_highest[0] - m_highest[1]);
        m_y = 0.5 * m_tangentY * (m_highest[2] - m_highest[3]);
        m_distance = std::max(0.5 * (m_highest[0] + m_highest[1]), 0.5 * (m_highest[2] + m_highest[3]));
        // A point, or a line seen end on, would put the eye onto itself.
        const double size = std::max({m_nearest - m_farthest, std::fabs(m_nearest) * 1e-6, 1e-6});
        m_distance = std::max(m_distance, m_nearest + 0.01 * size);
    }

    /// Looks at a point once more, to see how far off the middle the picture is.
    void look(const osg::Vec3d& point)
    {
        const double depth = m_distance - point * m_back;
        m_seenX.add(point * m_right - m_x, depth);
        m_seenY.add(point * m_up - m_y, depth);
    }

    /// Moves the eye to the middle of what it has seen.
    void centre()
    {
        m_x += m_seenX.offset();
        m_y += m_seenY.offset();
        m_seenX = m_seenY = Seen();
    }

    osg::Matrixd viewMatrix() const
    {
        const osg::Vec3d eye = m_right * m_x + m_up * m_y + m_back * m_distance;
        osg::Matrixd matrix;
        matrix.makeLookAt(eye, eye - m_back, m_up);
        return matrix;
    }

private:
    /// The outermost points of one axis, as tangents of their angles, and how deep they lie.
    struct Seen
    {
        void add(double across, double depth)
        {
            if (!(depth > 0))
                return;
            const double tangent = across / depth;
            if (tangent > highest) {
                highest = tangent;
                depthOfHighest = depth;
            }
            if (tangent < lowest) {
                lowest = tangent;
                depthOfLowest = depth;
            }
        }
        double offset() const
        {
            return lowest > highest ? 0.0 : (highest + lowest) / (1.0 / depthOfHighest + 1.0 / depthOfLowest);
        }

        double highest = std::numeric_limits<double>::lowest();
        double lowest = std::numeric_limits<double>::max();
        double depthOfHighest = 1;
        double depthOfLowest = 1;
    };

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

    double m_x = 0;
    double m_y = 0;
    double m_distance = 0;
    Seen m_seenX;
    Seen m_seenY;
};

/// Goes over the outermost points that are drawn; where a drawable is no plain geometry, over the corners of its box.
template <class Use>
class ForEachPoint : public osg::NodeVisitor
{
public:
    explicit ForEachPoint(Use use) : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN), m_use(use) {}

    void apply(osg::Drawable& drawable) override { addBox(drawable); }

    void apply(osg::Geometry& geometry) override
    {
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!points) {
            addBox(geometry);
            return;
        }
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        const auto outline = outlineOf(*points);
        for (const osg::Vec3& point : *outline)
            m_use(osg::Vec3d(point) * toWorld);
    }

private:
    void addBox(osg::Drawable& drawable)
    {
        const osg::BoundingBox& box = drawable.getBoundingBox();
        if (!box.valid())
            return;
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        for (unsigned int i = 0; i < 8; ++i)
            m_use(osg::Vec3d(box.corner(i)) * toWorld);
    }

    Use m_use;
};

} // namespace

CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect)
{
    constexpr double heightAngle = 30.0; // degrees from the bottom to the top of the picture
    constexpr double filled = 0.90;      // of the picture, so that the model does not touch the edges
    const double tangentY = std::tan(0.5 * osg::DegreesToRadians(heightAngle));
    Frame frame(directionsOf(view), filled * tangentY * aspect, filled * tangentY);
    ForEachPoint add([&frame](const osg::Vec3d& point) { frame.add(point); });
    scene.accept(add);
    if (frame.isEmpty()) {
        frame.add({-1, -1, -1});
        frame.add({1, 1, 1});
    }
    frame.place();
    for (int step = 0; step < 3; ++step) {
        ForEachPoint look([&frame](const osg::Vec3d& point) { frame.look(point); });
        scene.accept(look);
        frame.centre();
    }
    return {frame.viewMatrix(), osg::Matrixd::perspective(heightAngle, aspect, 1.0, 10.0)};
}

} // namespace vfViewer
