// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/ModelScene.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/Transform>

#include <sstream>
#include <string>

namespace vfTest {

/// Writes down which arrays and primitives there are.
class DigestGeometry : public osg::NodeVisitor
{
public:
    explicit DigestGeometry(std::ostream& text) : NodeVisitor(TRAVERSE_ALL_CHILDREN), m_text(text)
    {
        setNodeMaskOverride(~0u);
    }
    void apply(osg::Geometry& geometry) override
    {
        m_text << geometry.getVertexArray() << geometry.getNormalArray() << geometry.getColorArray();
        for (const auto& primitives : geometry.getPrimitiveSetList())
            m_text << primitives.get();
        m_text << '\n';
    }

private:
    std::ostream& m_text;
};

/// @return what there is of the model in one text: the parts, how they hang in the scene, where they stand
inline std::string digestOf(const vfScene::ModelScene& scene)
{
    std::ostringstream text;
    for (const auto& part : scene.parts()) {
        osg::ComputeBoundsVisitor bounds;
        part->accept(bounds);
        DigestGeometry geometry(text);
        part->accept(geometry);
        for (const osg::NodePath& path : part->getParentalNodePaths(&scene.root())) {
            for (const osg::Node* node : path)
                text << node->getName() << (node->getNodeMask() ? '+' : '-') << node->getStateSet() << '/';
            const osg::Vec3d center = bounds.getBoundingBox().center() * osg::computeLocalToWorld(path);
            text << center.x() << ' ' << center.y() << ' ' << center.z() << '\n';
        }
    }
    return text.str();
}

} // namespace vfTest
