// SPDX-License-Identifier: MIT
#include <velaforge/scene/ConvexHull.h>

#include <velaforge/base/LaunchPolicy.h>

#include <osg/BoundingBox>
#include <osg/observer_ptr>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>

namespace vfScene {

namespace {

/// Of so many points all are kept.
constexpr std::size_t fewPoints = 4096;

/// So many are worth a thread of their own.
constexpr std::size_t pointsWorthAThread = 500000;

/// Into so many parts the box is cut along each of two axes.
constexpr int cells = 256;

/// The lowest and the highest point over one cell of the ground.
struct Column
{
    bool isEmpty = true;
    osg::Vec3 lowest;
    osg::Vec3 highest;
};

bool isFinite(const osg::Vec3& point)
{
    return std::isfinite(point.x() + point.y() + point.z());
}

using Point = osg::Vec3Array::const_iterator;
using Columns = std::vector<Column>;

/// Does the work on both halves of the points, side by side where that is worth it. @return both results
template <class Work>
auto onHalves(const osg::Vec3Array& points, Work work)
{
    const Point middle = points.begin() + static_cast<std::ptrdiff_t>(points.size() / 2);
    const auto policy = points.size() < pointsWorthAThread ? std::launch::deferred : vfBase::asyncOrDeferred;
    auto second = std::async(policy, work, middle, points.end());
    auto first = work(points.begin(), middle);
    return std::pair(std::move(first), second.get());
}

osg::BoundingBox boundsOfFinite(Point begin, Point end)
{
    osg::BoundingBox box;
    for (; begin != end; ++begin) {
        if (isFinite(*begin))
            box.expandBy(*begin);
    }
    return box;
}

/// Four points at a time are looked at as the twelve numbers that they are, which processors do at once. Points that are
/// nowhere leave their mark in a sum; then all are looked at one by one.
osg::BoundingBox boundsOf(Point begin, Point end)
{
    constexpr std::size_t lanes = 12;
    const std::size_t count = static_cast<std::size_t>(end - begin) * 3;
    const std::size_t whole = count / lanes * lanes;
    const float* numbers = count > 0 ? begin->ptr() : nullptr;
    std::array<float, lanes> low;
    std::array<float, lanes> high;
    std::array<float, lanes> strange = {};
    low.fill(std::numeric_limits<float>::max());
    high.fill(std::numeric_limits<float>::lowest());
    for (std::size_t i = 0; i < whole; i += lanes) {
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            const float number = numbers[i + lane];
            low[lane] = number < low[lane] ? number : low[lane];
            high[lane] = number > high[lane] ? number : high[lane];
            strange[lane] += number - number; // 0, and not a number for what is not finite
        }
    }
    osg::BoundingBox box =
        boundsOfFinite(begin + static_cast<std::ptrdiff_t>(whole / 3), end); // the rest of them
    for (std::size_t lane = 0; lane < lanes && whole > 0; ++lane) {
        if (strange[lane] != 0)
            return boundsOfFinite(begin, end);
        const auto axis = static_cast<int>(lane % 3);
        box._min[axis] = std::min(box._min[axis], low[lane]);
        box._max[axis] = std::max(box._max[axis], high[lane]);
    }
    return isFinite(box._min) && isFinite(box._max) ? box : boundsOfFinite(begin, end);
}

/// Which points stand over which cell of the ground.
class Ground
{
public:
    explicit Ground(const osg::BoundingBox& box)
        : m_low(box._min), m_scaleX(scale(box.xMin(), box.xMax())), m_scaleY(scale(box.yMin(), box.yMax()))
    {}

    Columns columnsOf(Point begin, Point end) const
    {
        Columns columns(static_cast<std::size_t>(cells) * cells);
        for (; begin != end; ++begin) {
            const osg::Vec3& point = *begin;
            if (!isFinite(point))
                continue;
            const std::size_t x = place(point.x() - m_low.x(), m_scaleX);
            const std::size_t y = place(point.y() - m_low.y(), m_scaleY);
            add(columns[y * cells + x], point, point);
        }
        return columns;
    }

    /// Makes a column as high as both.
    static void add(Column& column, const osg::Vec3& lowest, const osg::Vec3& highest)
    {
        if (column.isEmpty || lowest.z() < column.lowest.z())
            column.lowest = lowest;
        if (column.isEmpty || highest.z() > column.highest.z())
            column.highest = highest;
        column.isEmpty = false;
    }

private:
    /// What is no number, since the box is too large for one, is in the last cell.
    static std::size_t place(float distance, float scale)
    {
        return static_cast<std::size_t>(std::min(static_cast<float>(cells - 1), distance * scale));
    }

    static float scale(float low, float high) { return high > low ? (cells - 1) / (high - low) : 0.0f; }

    osg::Vec3 m_low;
    float m_scaleX;
    float m_scaleY;
};

ConvexHull reduced(const osg::Vec3Array& points)
{
    auto [box, others] = onHalves(points, boundsOf);
    box.expandBy(others);
    if (!box.valid())
        return {};
    const Ground ground(box);
    auto [columns, more] =
        onHalves(points, [&ground](Point begin, Point end) { return ground.columnsOf(begin, end); });
    ConvexHull kept;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        if (!more[i].isEmpty)
            Ground::add(column, more[i].lowest, more[i].highest);
        if (column.isEmpty)
            continue;
        kept.push_back(column.lowest);
        if (column.highest != column.lowest)
            kept.push_back(column.highest);
    }
    return kept;
}

/// What was worked out, by the arrays of which it is.
class Memory
{
public:
    std::shared_ptr<const ConvexHull> find(const osg::Vec3Array& points)
    {
        const auto found = m_known.find(&points);
        const bool isValid = found != m_known.end() && found->second.array.valid() &&
                             found->second.count == points.size() &&
                             found->second.modifications == points.getModifiedCount();
        return isValid ? found->second.hull : nullptr;
    }

    void keep(const osg::Vec3Array& points, const std::shared_ptr<const ConvexHull>& hull)
    {
        // Sweeping each time would take time with the square of the arrays.
        if (m_known.size() >= m_sweepAt) {
            for (auto it = m_known.begin(); it != m_known.end();)
                it = it->second.array.valid() ? std::next(it) : m_known.erase(it);
            m_sweepAt = 2 * m_known.size() + fewest;
        }
        m_known[&points] = {&points, points.size(), points.getModifiedCount(), hull};
    }

private:
    struct Known
    {
        osg::observer_ptr<const osg::Vec3Array> array;
        std::size_t count = 0;
        unsigned int modifications = 0;
        std::shared_ptr<const ConvexHull> hull;
    };

    static constexpr std::size_t fewest = 16;

    std::map<const osg::Vec3Array*, Known> m_known;
    std::size_t m_sweepAt = fewest;
};

Memory& memory()
{
    static Memory kept;
    return kept;
}

} // namespace

std::shared_ptr<const ConvexHull> computeHull(const osg::Vec3Array& points)
{
    if (points.size() <= fewPoints)
        return std::make_shared<const ConvexHull>(points.begin(), points.end());
    return std::make_shared<const ConvexHull>(reduced(points));
}

bool isHullKept(const osg::Vec3Array& points)
{
    return points.size() > fewPoints;
}

void rememberHull(const osg::Vec3Array& points, const std::shared_ptr<const ConvexHull>& hull)
{
    if (isHullKept(points))
        memory().keep(points, hull);
}

std::shared_ptr<const ConvexHull> hullOf(const osg::Vec3Array& points)
{
    if (points.size() <= fewPoints)
        return computeHull(points);
    std::shared_ptr<const ConvexHull> hull = memory().find(points);
    if (!hull) {
        hull = computeHull(points);
        rememberHull(points, hull);
    }
    return hull;
}

} // namespace vfScene
