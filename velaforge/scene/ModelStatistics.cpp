// SPDX-License-Identifier: MIT
#include <velaforge/scene/ModelStatistics.h>

#include <velaforge/scene/ModelScene.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/NodeVisitor>
#include <osg/StateSet>
#include <osg/Texture>
#include <osg/TriangleIndexFunctor>

#include <algorithm>
#include <locale>
#include <set>
#include <sstream>

namespace vfScene {

namespace {

struct TriangleCounter
{
    void operator()(unsigned int, unsigned int, unsigned int) { ++triangles; }
    unsigned long long triangles = 0;
};

/// Returns the triangles of one primitive of so many vertices.
unsigned long long trianglesOf(GLenum mode, unsigned long long vertices)
{
    switch (mode) {
    case GL_TRIANGLES:
        return vertices / 3;
    case GL_QUADS:
        return vertices / 4 * 2;
    case GL_QUAD_STRIP:
        return vertices / 2 * 2 - std::min(vertices, 2ull);
    case GL_TRIANGLE_STRIP:
    case GL_TRIANGLE_FAN:
    case GL_POLYGON:
        return vertices - std::min(vertices, 2ull);
    default:
        return 0;
    }
}

/// Returns the number of triangles without looking at each.
unsigned long long trianglesOf(const osg::PrimitiveSet& primitives)
{
    const auto* lengths = dynamic_cast<const osg::DrawArrayLengths*>(&primitives);
    if (!lengths)
        return trianglesOf(primitives.getMode(), primitives.getNumIndices());
    unsigned long long triangles = 0;
    for (const GLsizei length : *lengths)
        triangles += trianglesOf(primitives.getMode(), static_cast<unsigned long long>(std::max(length, 0)));
    return triangles;
}

/// Counts what is drawn, each place where it hangs.
class Count : public osg::NodeVisitor
{
public:
    Count() : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Drawable& drawable) override
    {
        ++counted.parts;
        const osg::Geometry* geometry = drawable.asGeometry();
        if (!geometry) {
            osg::TriangleIndexFunctor<TriangleCounter> counter;
            drawable.accept(counter);
            counted.triangles += counter.triangles;
            return;
        }
        if (geometry->getVertexArray())
            counted.vertices += geometry->getVertexArray()->getNumElements();
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry->getPrimitiveSetList())
            counted.triangles += trianglesOf(*primitives);
    }

    ModelStatistics counted;
};

/// Goes over what nodes hold, each once.
class Measure : public osg::NodeVisitor
{
public:
    explicit Measure(TraversalMode mode) : NodeVisitor(mode)
    {
        if (mode == TRAVERSE_ALL_CHILDREN)
            setNodeMaskOverride(~0u);
    }

    void apply(osg::Node& node) override
    {
        if (const osg::StateSet* state = node.getStateSet())
            add(*state);
        traverse(node);
    }

    void apply(osg::Drawable& drawable) override
    {
        if (const osg::StateSet* state = drawable.getStateSet())
            add(*state);
    }

    void apply(osg::Geometry& geometry) override
    {
        apply(static_cast<osg::Drawable&>(geometry));
        osg::Geometry::ArrayList arrays;
        geometry.getArrayList(arrays);
        for (const osg::ref_ptr<osg::Array>& array : arrays)
            memory += isNew(array) ? array->getTotalDataSize() : 0;
        for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList())
            memory += isNew(primitives) ? primitives->getTotalDataSize() : 0;
    }

    std::set<const osg::StateAttribute*> materials;
    std::set<const osg::StateAttribute*> textures;
    std::size_t memory = 0;

private:
    bool isNew(const osg::Object* object) { return object && m_seen.insert(object).second; }

    void add(const osg::StateSet& state)
    {
        if (const osg::StateAttribute* material = state.getAttribute(osg::StateAttribute::MATERIAL))
            materials.insert(material);
        for (unsigned int unit = 0; unit < state.getNumTextureAttributeLists(); ++unit) {
            const auto* texture = dynamic_cast<const osg::Texture*>(
                state.getTextureAttribute(unit, osg::StateAttribute::TEXTURE));
            if (!texture)
                continue;
            textures.insert(texture);
            for (unsigned int i = 0; i < texture->getNumImages(); ++i) {
                const osg::Image* image = texture->getImage(i);
                memory += isNew(image) ? image->getTotalSizeInBytesIncludingMipmaps() : 0;
            }
        }
    }

    std::set<const osg::Object*> m_seen;
};

} // namespace

std::size_t measureMemory(osg::Node& node)
{
    Measure measure(osg::NodeVisitor::TRAVERSE_ALL_CHILDREN);
    node.accept(measure);
    return measure.memory;
}

std::string describeMemory(unsigned long long bytes)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(3);
    const char* const units[] = {"bytes", "kB", "MB", "GB", "TB"};
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    while (value >= 999.5 && unit < 4) {
        value /= 1000;
        ++unit;
    }
    text << value << ' ' << units[unit];
    return text.str();
}

ModelStatistics countModel(osg::Node& model)
{
    Count count;
    model.accept(count);
    Measure measure(osg::NodeVisitor::TRAVERSE_ACTIVE_CHILDREN);
    model.accept(measure);
    count.counted.materials = measure.materials.size();
    count.counted.textures = measure.textures.size();
    count.counted.memory = measure.memory;
    osg::ComputeBoundsVisitor bounds;
    model.accept(bounds);
    count.counted.bounds = bounds.getBoundingBox();
    return count.counted;
}

std::string describeHistory(const ModelScene& scene)
{
    const std::size_t steps = scene.getHistoryLength();
    return std::to_string(steps) + (steps == 1 ? " step holds " : " steps hold ") +
           describeMemory(scene.getHistoryMemory()) + " of at most " +
           describeMemory(scene.getHistoryLimit());
}

std::string describe(const ModelStatistics& statistics)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << statistics.triangles << " triangles and " << statistics.vertices << " vertices in "
         << statistics.parts << (statistics.parts == 1 ? " part" : " parts") << ", " << statistics.materials
         << (statistics.materials == 1 ? " material" : " materials") << ", " << statistics.textures
         << (statistics.textures == 1 ? " texture" : " textures") << ", "
         << describeMemory(statistics.memory);
    const osg::BoundingBox& box = statistics.bounds;
    if (box.valid())
        text << "; " << box.xMax() - box.xMin() << " wide, " << box.yMax() - box.yMin() << " deep, "
             << box.zMax() - box.zMin() << " high";
    return text.str();
}

} // namespace vfScene
