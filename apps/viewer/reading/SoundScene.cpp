// SPDX-License-Identifier: MIT
#include "reading/SoundScene.h"

#include "reading/SoundAnimation.h"
#include "reading/SoundGeometry.h"

#include <osg/Geometry>
#include <osg/NodeVisitor>

namespace vfViewer {

std::size_t makeSceneSound(osg::Node& scene)
{
    struct MakeSound : osg::NodeVisitor
    {
        MakeSound() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }
        void apply(osg::Node& node) override
        {
            makeAnimationSound(node);
            traverse(node);
        }
        void apply(osg::Geometry& geometry) override
        {
            makeAnimationSound(geometry);
            count += makeSound(geometry);
        }
        std::size_t count = 0;
    } visitor;
    scene.accept(visitor);
    return visitor.count;
}

} // namespace vfViewer
