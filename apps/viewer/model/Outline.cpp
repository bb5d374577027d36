// SPDX-License-Identifier: MIT
#include "model/Outline.h"

#include <osg/BoundingBox>
#include <osg/observer_ptr>

#include <algorithm>
#include <cmath>
#include <map>

namespace vfViewer {

namespace {

/// Of so many points all are kept.
constexpr std::size_t fewPoints = 4096;

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

Outline reduced(const osg::Vec3Array& points)
{
    osg::BoundingBox box;
    for (const osg::Vec3& point : points) {
        if (isFinite(point))
            box.expandBy(point);
    }
    if (!box.valid())
        return {};
    const auto scale = [](float low, float high) { return high > low ? (cells - 1) / (high - low) : 0.0f; };
    const float scaleX = scale(box.xMin(), box.xMax());
    const float scaleY = scale(box.yMin(), box.yMax());
    std::vector<Column> columns(static_cast<std::size_t>(cells) * cells);
    for (const osg::Vec3& point : points) {
        if (!isFinite(point))
            continue;
        const auto x = static_cast<std::size_t>((point.x() - box.xMin()) * scaleX);
        const auto y = static_cast<std::size_t>((point.y() - box.yMin()) * scaleY);
        Column& column =
            columns[std::min<std::size_t>(y, cells - 1) * cells + std::min<std::size_t>(x, cells - 1)];
        if (column.isEmpty || point.z() < column.lowest.z())
            column.lowest = point;
        if (column.isEmpty || point.z() > column.highest.z())
            column.highest = point;
        column.isEmpty = false;
    }
    Outline kept;
    for (const Column& column : columns) {
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
    std::shared_ptr<const Outline> find(const osg::Vec3Array& points)
    {
        const auto found = m_known.find(&points);
        const bool isValid = found != m_known.end() && found->second.array.valid() &&
                             found->second.count == points.size() &&
                             found->second.modifications == points.getModifiedCount();
        return isValid ? found->second.outline : nullptr;
    }

    void keep(const osg::Vec3Array& points, const std::shared_ptr<const Outline>& outline)
    {
        for (auto it = m_known.begin(); it != m_known.end();)
            it = it->second.array.valid() ? std::next(it) : m_known.erase(it);
        m_known[&points] = {&points, points.size(), points.getModifiedCount(), outline};
    }

private:
    struct Known
    {
        osg::observer_ptr<const osg::Vec3Array> array;
        std::size_t count = 0;
        unsigned int modifications = 0;
        std::shared_ptr<const Outline> outline;
    };

    std::map<const osg::Vec3Array*, Known> m_known;
};

Memory& memory()
{
    static Memory kept;
    return kept;
}

} // namespace

std::shared_ptr<const Outline> workOutOutline(const osg::Vec3Array& points)
{
    if (points.size() <= fewPoints)
        return std::make_shared<const Outline>(points.begin(), points.end());
    return std::make_shared<const Outline>(reduced(points));
}

void rememberOutline(const osg::Vec3Array& points, const std::shared_ptr<const Outline>& outline)
{
    memory().keep(points, outline);
}

std::shared_ptr<const Outline> outlineOf(const osg::Vec3Array& points)
{
    if (points.size() <= fewPoints)
        return workOutOutline(points);
    std::shared_ptr<const Outline> outline = memory().find(points);
    if (!outline) {
        outline = workOutOutline(points);
        rememberOutline(points, outline);
    }
    return outline;
}

} // namespace vfViewer
