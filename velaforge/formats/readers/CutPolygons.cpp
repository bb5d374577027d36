// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/CutPolygons.h>

#include <velaforge/scene/Triangulate.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>

#include <vector>

namespace vfFormats {

namespace {

class CutPolygons : public osg::NodeVisitor
{
public:
    CutPolygons() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        const auto* points = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!points)
            return;
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            osg::PrimitiveSet& polygons = *geometry.getPrimitiveSet(i);
            if (polygons.getMode() != GL_POLYGON)
                continue;
            m_triangles.clear();
            cut(polygons, *points);
            geometry.setPrimitiveSet(
                i, new osg::DrawElementsUInt(GL_TRIANGLES, m_triangles.begin(), m_triangles.end()));
        }
    }

private:
    void cut(const osg::PrimitiveSet& polygons, const osg::Vec3Array& points)
    {
        const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&polygons);
        if (!lengths) {
            cut(polygons, 0, polygons.getNumIndices(), points);
            return;
        }
        unsigned int first = 0;
        for (const GLsizei length : *lengths) {
            cut(polygons, first, static_cast<unsigned int>(length), points);
            first += static_cast<unsigned int>(length);
        }
    }

    void cut(const osg::PrimitiveSet& polygons, unsigned int first, unsigned int count,
             const osg::Vec3Array& points)
    {
        if (count < 3)
            return;
        std::vector<osg::Vec3> corners;
        for (unsigned int i = 0; i < count; ++i)
            corners.push_back(points[polygons.index(first + i)]);
        std::vector<unsigned int> triangles;
        vfScene::triangulate(corners, triangles);
        for (const unsigned int corner : triangles)
            m_triangles.push_back(polygons.index(first + corner));
    }

    std::vector<unsigned int> m_triangles;
};

} // namespace

void cutPolygons(osg::Node& scene)
{
    CutPolygons visitor;
    scene.accept(visitor);
}

} // namespace vfFormats
