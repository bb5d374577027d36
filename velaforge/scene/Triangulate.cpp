// SPDX-License-Identifier: MIT
#include <velaforge/scene/Triangulate.h>

#include <cmath>
#include <cstddef>

namespace vfScene {

namespace {

/// Cutting off ears takes time with the square of the corners, or the cube at worst.
constexpr std::size_t mostCornersForEars = 1000;

struct Point
{
    double x;
    double y;
};

/// Twice the area to the left of the way from @p a over @p b to @p c.
double turn(const Point& a, const Point& b, const Point& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// The normal of a polygon, whatever its shape; its length is twice the area.
osg::Vec3d normalOf(const std::vector<osg::Vec3>& points)
{
    osg::Vec3d normal;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const osg::Vec3d a = points[i];
        const osg::Vec3d b = points[(i + 1) % points.size()];
        normal += osg::Vec3d((a.y() - b.y()) * (a.z() + b.z()), (a.z() - b.z()) * (a.x() + b.x()),
                             (a.x() - b.x()) * (a.y() + b.y()));
    }
    return normal;
}

/// @return the points as seen against their normal, so that the polygon runs to the left
std::vector<Point> flat(const std::vector<osg::Vec3>& points)
{
    const osg::Vec3d normal = normalOf(points);
    const double x = std::abs(normal.x());
    const double y = std::abs(normal.y());
    const double z = std::abs(normal.z());
    std::vector<Point> seen;
    seen.reserve(points.size());
    for (const osg::Vec3& point : points) {
        if (z >= x && z >= y)
            seen.push_back({normal.z() < 0 ? -point.x() : point.x(), point.y()});
        else if (y >= x)
            seen.push_back({normal.y() < 0 ? -point.z() : point.z(), point.x()});
        else
            seen.push_back({normal.x() < 0 ? -point.y() : point.y(), point.z()});
    }
    return seen;
}

bool isConvex(const std::vector<Point>& points)
{
    const std::size_t count = points.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (turn(points[i], points[(i + 1) % count], points[(i + 2) % count]) < 0)
            return false;
    }
    return true;
}

bool isInside(const Point& point, const Point& a, const Point& b, const Point& c)
{
    return turn(a, b, point) >= 0 && turn(b, c, point) >= 0 && turn(c, a, point) >= 0;
}

/// The corners that are left while ears are cut off.
class Ears
{
public:
    Ears(const std::vector<Point>& points, std::vector<unsigned int>& triangles)
        : m_points(points), m_triangles(triangles)
    {
        for (unsigned int i = 0; i < points.size(); ++i)
            m_left.push_back(i);
    }

    void cut()
    {
        std::size_t at = 0;
        std::size_t tried = 0;
        while (m_left.size() > 3) {
            // Where no corner is an ear the polygon crosses itself: any corner goes.
            if (tried < m_left.size() && !isEar(at)) {
                at = (at + 1) % m_left.size();
                ++tried;
                continue;
            }
            add(at);
            m_left.erase(m_left.begin() + static_cast<std::ptrdiff_t>(at));
            at %= m_left.size();
            tried = 0;
        }
        add(1);
    }

private:
    unsigned int left(std::size_t at) const { return m_left[at % m_left.size()]; }

    void add(std::size_t at)
    {
        for (const std::size_t corner : {at + m_left.size() - 1, at, at + 1})
            m_triangles.push_back(left(corner));
    }

    bool isEar(std::size_t at) const
    {
        const unsigned int before = left(at + m_left.size() - 1);
        const unsigned int self = left(at);
        const unsigned int after = left(at + 1);
        const Point& a = m_points[before];
        const Point& b = m_points[self];
        const Point& c = m_points[after];
        if (turn(a, b, c) <= 0)
            return false;
        for (const unsigned int other : m_left) {
            const Point& point = m_points[other];
            const bool isCorner = other == before || other == self || other == after;
            const bool isSame = (point.x == a.x && point.y == a.y) || (point.x == c.x && point.y == c.y);
            if (!isCorner && !isSame && isInside(point, a, b, c))
                return false;
        }
        return true;
    }

    const std::vector<Point>& m_points;
    std::vector<unsigned int>& m_triangles;
    std::vector<unsigned int> m_left;
};

} // namespace

void triangulate(const std::vector<osg::Vec3>& points, std::vector<unsigned int>& triangles)
{
    const auto count = static_cast<unsigned int>(points.size());
    if (count > 3 && count <= mostCornersForEars) {
        const std::vector<Point> seen = flat(points);
        if (!isConvex(seen)) {
            Ears(seen, triangles).cut();
            return;
        }
    }
    for (unsigned int i = 2; i < count; ++i)
        triangles.insert(triangles.end(), {0, i - 1, i});
}

} // namespace vfScene
