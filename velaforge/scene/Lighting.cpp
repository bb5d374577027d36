// SPDX-License-Identifier: MIT
#include <velaforge/scene/Lighting.h>

#include <velaforge/scene/Lights.h>
#include <velaforge/scene/Normals.h>

#include <osg/Geometry>
#include <osg/Material>
#include <osg/NodeVisitor>
#include <osg/TriangleIndexFunctor>
#include <osgAnimation/RigGeometry>

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace vfScene {

namespace {

/// Tells for the triangles of a geometry whether their normals are on the side from which they run counter-clockwise.
struct CompareNormals
{
    const osg::Vec3Array* points = nullptr;
    const osg::Vec3Array* normals = nullptr;
    std::size_t agreeing = 0;
    std::size_t opposed = 0;
    std::size_t useless = 0;

    void operator()(unsigned int a, unsigned int b, unsigned int c)
    {
        const std::size_t count = std::min(points->size(), normals->size());
        if (a >= count || b >= count || c >= count)
            return;
        const osg::Vec3 normal = (*normals)[a] + (*normals)[b] + (*normals)[c];
        const osg::Vec3 side = ((*points)[b] - (*points)[a]) ^ ((*points)[c] - (*points)[a]);
        if (!(normal.length2() > 1e-6f))
            ++useless;
        else if (normal * side < 0)
            ++opposed;
        else
            ++agreeing;
    }
};

/// Where faces meet at less than this they are taken for one that is curved.
constexpr double creaseAngle = 30 * 3.14159265358979 / 180;

class FindGeometry : public osg::NodeVisitor
{
public:
    FindGeometry() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        const osg::Array* vertices = geometry.getVertexArray();
        if (!vertices || vertices->getNumElements() == 0)
            return;
        if (!hasSurface(geometry))
            setSelfLit(geometry, inheritedMaterial());
        else if (!geometry.getNormalArray() || !putNormalsRight(geometry))
            withoutNormals.push_back(&geometry);
        // A skin takes its normals from what it is when it is not bent.
        auto* skin = dynamic_cast<osgAnimation::RigGeometry*>(&geometry);
        if (skin && skin->getSourceGeometry() && skin->getSourceGeometry()->getNormalArray())
            putNormalsRight(*skin->getSourceGeometry());
    }

    std::vector<osg::Geometry*> withoutNormals;

private:
    /// @return the material that the geometry has from the nodes above it; null for none
    const osg::Material* inheritedMaterial() const
    {
        const osg::Material* material = nullptr;
        for (const osg::Node* node : getNodePath()) {
            const osg::StateSet* state = node->getStateSet();
            if (state && node != getNodePath().back()) {
                if (const auto* found = dynamic_cast<const osg::Material*>(
                        state->getAttribute(osg::StateAttribute::MATERIAL)))
                    material = found;
            }
        }
        return material;
    }

    /// Light falls on the side from which a triangle runs counter-clockwise, so normals that point the other way would
    /// leave it black. @return false for normals that are of no use
    bool putNormalsRight(osg::Geometry& geometry)
    {
        auto* normals = dynamic_cast<osg::Vec3Array*>(geometry.getNormalArray());
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!normals || !points || normals->getBinding() != osg::Array::BIND_PER_VERTEX)
            return true;
        if (normals->size() < points->size())
            return false;
        osg::TriangleIndexFunctor<CompareNormals> compare;
        compare.points = points;
        compare.normals = normals;
        geometry.accept(compare);
        if (compare.useless > compare.agreeing + compare.opposed)
            return false;
        if (compare.opposed > compare.agreeing && m_turned.insert(normals).second) {
            for (osg::Vec3& normal : *normals)
                normal = -normal;
            normals->dirty();
        }
        return true;
    }

    std::unordered_set<const osg::Array*> m_turned; ///< geometries may share their normals

    static bool hasSurface(const osg::Geometry& geometry)
    {
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            if (geometry.getPrimitiveSet(i)->getMode() >= GL_TRIANGLES)
                return true;
        }
        return false;
    }
};

} // namespace

void prepareLighting(osg::Node& scene)
{
    FindGeometry finder;
    scene.accept(finder);
    for (osg::Geometry* geometry : finder.withoutNormals)
        makeNormals(*geometry, creaseAngle);
}

} // namespace vfScene
