// SPDX-License-Identifier: MIT
#include <velaforge/scene/StandardView.h>

#include <velaforge/scene/ConvexHull.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/TriangleFunctor>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vfScene {

namespace {

/// How a camera is turned.
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
        m_lowestX = std::min(m_lowestX, x);
        m_highestX = std::max(m_highestX, x);
        m_lowestY = std::min(m_lowestY, y);
        m_highestY = std::max(m_highestY, y);
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
        m_distance = std::max(m_distance, m_nearest + 0.01 * depth());
    }

    /// The same for a picture without perspective, the size of which is that of the middle of what is seen.
    void placeFlat()
    {
        m_x = 0.5 * (m_lowestX + m_highestX);
        m_y = 0.5 * (m_lowestY + m_highestY);
        const double distance = std::max(0.5 * (m_highestX - m_lowestX) / m_tangentX,
                                         0.5 * (m_highestY - m_lowestY) / m_tangentY);
        m_distance = 0.5 * (m_nearest + m_farthest) + std::max(distance, 0.01 * depth());
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

    LookAt lookAt() const
    {
        const osg::Vec3d eye = m_right * m_x + m_up * m_y + m_back * m_distance;
        const double ahead = m_distance - 0.5 * (m_nearest + m_farthest);
        return {eye, eye - m_back * std::max(ahead, 1e-6), m_up};
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

    /// @return how far what is seen reaches away from the eye, never 0
    double depth() const { return std::max({m_nearest - m_farthest, std::fabs(m_nearest) * 1e-6, 1e-6}); }

    osg::Vec3d m_back;
    osg::Vec3d m_right;
    osg::Vec3d m_up;
    double m_tangentX;
    double m_tangentY;
    double m_highest[4] = {std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(),
                           std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};
    double m_nearest = std::numeric_limits<double>::lowest();
    double m_farthest = std::numeric_limits<double>::max();
    double m_lowestX = std::numeric_limits<double>::max();
    double m_highestX = std::numeric_limits<double>::lowest();
    double m_lowestY = std::numeric_limits<double>::max();
    double m_highestY = std::numeric_limits<double>::lowest();
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

    /// Goes over a node where it hangs first.
    void visit(osg::Node& node)
    {
        const osg::NodePathList paths = node.getParentalNodePaths();
        osg::NodePath above;
        if (!paths.empty())
            above.assign(paths.front().begin(), paths.front().end() - 1);
        for (osg::Node* group : above)
            pushOntoNodePath(group);
        node.accept(*this);
        for (std::size_t i = 0; i < above.size(); ++i)
            popFromNodePath();
    }

    void apply(osg::Drawable& drawable) override { addBox(drawable); }

    void apply(osg::Geometry& geometry) override
    {
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!points) {
            addBox(geometry);
            return;
        }
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        const auto hull = hullOf(*points);
        for (const osg::Vec3& point : *hull)
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

CameraPlacement place(osg::Node& node, const Directions& directions, double aspect, Projection projection)
{
    constexpr double filled = 0.90; // of the picture, so that the model does not touch the edges
    const double tangent = filled * std::tan(0.5 * osg::DegreesToRadians(heightAngle));
    Frame frame(directions, tangent * aspect, tangent);
    ForEachPoint add([&frame](const osg::Vec3d& point) { frame.add(point); });
    add.visit(node);
    if (frame.isEmpty()) {
        frame.add({-1, -1, -1});
        frame.add({1, 1, 1});
    }
    if (projection == Projection::Orthographic) {
        frame.placeFlat();
        return placementOf(frame.lookAt(), aspect, projection);
    }
    frame.place();
    for (int step = 0; step < 3; ++step) {
        ForEachPoint look([&frame](const osg::Vec3d& point) { frame.look(point); });
        look.visit(node);
        frame.centre();
    }
    return placementOf(frame.lookAt(), aspect, projection);
}

} // namespace

CameraPlacement placeCamera(osg::Node& scene, StandardView view, double aspect, Projection projection)
{
    return place(scene, directionsOf(view), aspect, projection);
}

CameraPlacement placeCamera(osg::Node& node, const LookAt& direction, double aspect, Projection projection)
{
    Directions directions = {direction.eye - direction.centre, direction.up};
    if (directions.toEye.length2() == 0 || (directions.toEye ^ directions.up).length2() == 0)
        directions = directionsOf(StandardView::Front);
    return place(node, directions, aspect, projection);
}

CameraPlacement placeOnTurntable(osg::Node& scene, const LookAt& direction, double turn, double aspect,
                                 Projection projection)
{
    osg::ComputeBoundsVisitor visitor(osg::NodeVisitor::TRAVERSE_ACTIVE_CHILDREN);
    scene.accept(visitor);
    const osg::BoundingBox box = visitor.getBoundingBox();
    const osg::Vec3d middle = box.valid() ? osg::Vec3d(box.center()) : osg::Vec3d();
    const double radius = box.valid() && box.radius() > 0 ? static_cast<double>(box.radius()) : 1.0;
    osg::Vec3d back = direction.eye - direction.centre;
    if (back.normalize() == 0)
        back = {0, -1, 0};
    // The narrower of the two angles has to hold the sphere around the model.
    const double upright = 0.5 * osg::DegreesToRadians(heightAngle);
    const double narrower = std::min(upright, std::atan(std::tan(upright) * aspect));
    const double distance =
        projection == Projection::Orthographic ? radius / std::tan(narrower) : radius / std::sin(narrower);
    const osg::Quat turned(2 * osg::PI * turn, osg::Vec3d(0, 0, 1));
    return placementOf({middle + turned * (back * distance), middle, turned * direction.up}, aspect,
                       projection);
}

CameraPlacement placementOf(const LookAt& lookAt, double aspect, Projection projection)
{
    CameraPlacement placement;
    placement.lookAt = lookAt;
    placement.view.makeLookAt(lookAt.eye, lookAt.centre, lookAt.up);
    if (projection == Projection::Orthographic) {
        const double height =
            (lookAt.eye - lookAt.centre).length() * std::tan(0.5 * osg::DegreesToRadians(heightAngle));
        placement.projection.makeOrtho(-height * aspect, height * aspect, -height, height, 1.0, 10.0);
    } else {
        placement.projection.makePerspective(heightAngle, aspect, 1.0, 10.0);
    }
    return placement;
}

} // namespace vfScene
