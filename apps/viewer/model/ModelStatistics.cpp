// SPDX-License-Identifier: MIT
#include "model/ModelStatistics.h"

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/TriangleIndexFunctor>

#include <locale>
#include <sstream>

namespace vfViewer {

namespace {

struct TriangleCounter
{
    void operator()(unsigned int, unsigned int, unsigned int) { ++triangles; }
    unsigned long long triangles = 0;
};

/// Counts what is drawn, each place where it hangs.
class Count : public osg::NodeVisitor
{
public:
    Count() : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN) {}

    void apply(osg::Drawable& drawable) override
    {
        osg::TriangleIndexFunctor<TriangleCounter> counter;
        drawable.accept(counter);
        counted.triangles += counter.triangles;
        const osg::Geometry* geometry = drawable.asGeometry();
        if (geometry && geometry->getVertexArray())
            counted.vertices += geometry->getVertexArray()->getNumElements();
        ++counted.drawables;
    }

    ModelStatistics counted;
};

} // namespace

ModelStatistics countModel(osg::Node& model)
{
    Count count;
    model.accept(count);
    osg::ComputeBoundsVisitor bounds;
    model.accept(bounds);
    count.counted.bounds = bounds.getBoundingBox();
    return count.counted;
}

std::string describe(const ModelStatistics& statistics)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << statistics.triangles << " triangles and " << statistics.vertices << " vertices in "
         << statistics.drawables << (statistics.drawables == 1 ? " drawable" : " drawables");
    const osg::BoundingBox& box = statistics.bounds;
    if (box.valid())
        text << "; " << box.xMax() - box.xMin() << " wide, " << box.yMax() - box.yMin() << " deep, "
             << box.zMax() - box.zMin() << " high";
    return text.str();
}

} // namespace vfViewer
