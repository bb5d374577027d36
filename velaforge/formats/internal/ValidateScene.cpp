// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ValidateScene.h>

#include <velaforge/formats/internal/ValidateAnimation.h>
#include <velaforge/formats/internal/ValidateGeometry.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>

namespace vfFormats {

std::size_t validateScene(osg::Node& scene)
{
    struct Validate : osg::NodeVisitor
    {
        Validate() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Node& node) override
        {
            validateAnimations(node);
            traverse(node);
        }
        void apply(osg::Geometry& geometry) override
        {
            validateAnimations(geometry);
            count += validateGeometry(geometry);
        }
        std::size_t count = 0;
    } visitor;
    scene.accept(visitor);
    return visitor.count;
}

} // namespace vfFormats
