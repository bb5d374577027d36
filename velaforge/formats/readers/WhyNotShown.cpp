// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/WhyNotShown.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/TriangleFunctor>
#include <osgAnimation/RigGeometry>

#include <cmath>
#include <cstring>

namespace vfFormats {

namespace {

bool isFinite(const osg::BoundingBox& box)
{
    for (unsigned int i = 0; i < 8; ++i) {
        if (!std::isfinite(box.corner(i).length2()))
            return false;
    }
    return true;
}

/// Counts what is drawn: bounds alone may be those of vertices that no face uses.
class CountPrimitives : public osg::NodeVisitor
{
public:
    using NodeVisitor::apply;

    CountPrimitives() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Geometry& geometry) override
    {
        add(&geometry);
        if (const auto* skin = dynamic_cast<const osgAnimation::RigGeometry*>(&geometry))
            add(skin->getSourceGeometry());
    }

    /// Drawables of other kinds, such as spheres, draw themselves.
    void apply(osg::Drawable& drawable) override { count += drawable.asGeometry() ? 0 : 1; }

    std::size_t count = 0;

private:
    void add(const osg::Geometry* geometry)
    {
        for (unsigned int i = 0; geometry && i < geometry->getNumPrimitiveSets(); ++i)
            count += geometry->getPrimitiveSet(i)->getNumPrimitives();
    }
};

/// @return whether a scene is of geometries with faces, and without points, which may lie in one place
bool hasOnlyFaces(osg::Node& scene)
{
    struct Look : osg::NodeVisitor
    {
        Look() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Drawable&) override { hasOthers = true; }
        void apply(osg::Geometry& geometry) override
        {
            for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList())
                hasOthers = hasOthers || primitives->getMode() == GL_POINTS;
        }
        bool hasOthers = false;
    } look;
    scene.accept(look);
    return !look.hasOthers;
}

/// Looks for a triangle that can be seen.
struct FindArea
{
    void operator()(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c, bool = false)
    {
        isFound = isFound || ((osg::Vec3d(b) - a) ^ (osg::Vec3d(c) - a)).length2() > 0;
    }
    bool isFound = false;
};

/// @return whether a scene is of triangles alone, all of them without an area
bool hasNoArea(osg::Node& scene)
{
    struct Look : osg::NodeVisitor
    {
        using NodeVisitor::apply;

        Look() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Drawable&) override { isSeen = true; }
        void apply(osg::Geometry& geometry) override
        {
            const bool isPlain = !std::strcmp(geometry.className(), "Geometry");
            for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry.getPrimitiveSetList())
                isSeen = isSeen || primitives->getMode() < GL_TRIANGLES;
            if (!isSeen && isPlain) {
                osg::TriangleFunctor<FindArea> triangles;
                geometry.accept(triangles);
                isSeen = triangles.isFound;
            }
            isSeen = isSeen || !isPlain;
        }
        bool isSeen = false;
    } look;
    scene.accept(look);
    return !look.isSeen;
}

} // namespace

std::string whyNotShown(osg::Node& scene)
{
    CountPrimitives primitives;
    scene.accept(primitives);
    osg::ComputeBoundsVisitor bounds;
    scene.accept(bounds);
    if (primitives.count == 0 || !bounds.getBoundingBox().valid())
        return "there is nothing in it that could be shown";
    if (!isFinite(bounds.getBoundingBox()))
        return "its coordinates are too large";
    if (!(bounds.getBoundingBox().radius2() > 0) && hasOnlyFaces(scene))
        return "all of its faces lie in one point";
    if (hasNoArea(scene))
        return "none of its faces has an area";
    return {};
}

} // namespace vfFormats
