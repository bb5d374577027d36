// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ModelMeasure.h>

#include <velaforge/formats/FormatLosses.h>
#include <velaforge/formats/internal/PrimitiveWalk.h>
#include <velaforge/formats/internal/VertexArray.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/Transform>

#include <algorithm>
#include <cmath>

namespace vfFormats {

namespace {

/// Formats write six digits at least.
constexpr double rounding = 1e-5;

class Measure : public osg::NodeVisitor
{
public:
    explicit Measure(unsigned int lost) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_lost(lost)
    {
        setNodeMaskOverride(~0u);
    }

    void apply(osg::Geometry& geometry) override
    {
        const VertexArray vertices(geometry.getVertexArray());
        m_matrix = osg::computeLocalToWorld(getNodePath());
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList()) {
            walkPrimitives(*primitives,
                           [&](PrimitiveKind kind, const unsigned int* indices, std::size_t count) {
                               if ((kind == PrimitiveKind::Point && (m_lost & Points)) ||
                                   (kind == PrimitiveKind::Lines && (m_lost & Lines)))
                                   return;
                               add(vertices, kind, indices, count);
                           });
        }
    }

    ModelMeasure measure;

private:
    void add(const VertexArray& vertices, PrimitiveKind kind, const unsigned int* indices, std::size_t count)
    {
        m_corners.clear();
        for (std::size_t i = 0; i < count; ++i) {
            if (indices[i] >= vertices.size())
                return;
            m_corners.push_back(vertices[indices[i]] * m_matrix);
            measure.box.expandBy(m_corners.back());
        }
        if (kind == PrimitiveKind::Point) {
            ++measure.points;
        } else if (kind == PrimitiveKind::Lines) {
            measure.lines += count - 1;
        } else {
            measure.triangles += count - 2;
            for (std::size_t i = 1; i + 1 < count; ++i)
                measure.solidTriangles += isSolid(m_corners[0], m_corners[i], m_corners[i + 1]);
        }
    }

    /// @return whether a triangle is higher than the rounding of its coordinates
    static bool isSolid(const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& c)
    {
        double largest = 0;
        for (int i = 0; i < 3; ++i)
            largest = std::max({largest, std::abs(a[i]), std::abs(b[i]), std::abs(c[i])});
        const double longest = std::max({(b - a).length(), (c - a).length(), (c - b).length()});
        return ((b - a) ^ (c - a)).length() > 10 * rounding * largest * longest;
    }

    unsigned int m_lost;
    osg::Matrixd m_matrix;
    std::vector<osg::Vec3d> m_corners;
};

} // namespace

ModelMeasure measureModel(osg::Node& model, unsigned int lost)
{
    Measure visitor(lost);
    model.accept(visitor);
    return visitor.measure;
}

bool hasEverything(const ModelMeasure& model, const ModelMeasure& written, bool isMoving)
{
    if (written.triangles < model.solidTriangles || written.lines < model.lines ||
        written.points < model.points)
        return false;
    if (model.isEmpty() || isMoving || model.solidTriangles + model.lines + model.points == 0)
        return true;
    double largest = 0;
    for (int i = 0; i < 3; ++i)
        largest = std::max({largest, std::abs(model.box._min[i]), std::abs(model.box._max[i])});
    const double allowed = 10 * rounding * (largest + model.box.radius());
    for (int i = 0; i < 3; ++i) {
        // What a reader leaves out may be what reaches farthest.
        const bool isWithin = written.box._min[i] >= model.box._min[i] - allowed &&
                              written.box._max[i] <= model.box._max[i] + allowed;
        const bool reachesAsFar = written.box._min[i] <= model.box._min[i] + allowed &&
                                  written.box._max[i] >= model.box._max[i] - allowed;
        if (!isWithin || (!reachesAsFar && written.triangles == model.triangles))
            return false;
    }
    return true;
}

} // namespace vfFormats
