// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/ModelParts.h>

#include <velaforge/formats/internal/VertexArray.h>

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osg/Transform>

#include <algorithm>

namespace vfFormats {

namespace {

class Collect : public osg::NodeVisitor
{
public:
    Collect() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Node& node) override
    {
        const Appearance above = m_look;
        const std::string nameAbove = m_name;
        m_look.apply(node.getStateSet());
        if (!node.getName().empty())
            m_name = node.getName();
        traverse(node);
        m_look = above;
        m_name = nameAbove;
    }

    void apply(osg::Geometry& geometry) override
    {
        if (VertexArray(geometry.getVertexArray()).size() == 0 || geometry.getNumPrimitiveSets() == 0)
            return;
        Appearance look = m_look;
        look.apply(geometry.getStateSet());
        parts.push_back({&geometry, osg::computeLocalToWorld(getNodePath()), look,
                         m_name.empty() ? geometry.getName() : m_name});
    }

    std::vector<ModelPart> parts;

private:
    Appearance m_look;
    std::string m_name;
};

} // namespace

std::vector<ModelPart> collectParts(osg::Node& model)
{
    Collect collect;
    model.accept(collect);
    return collect.parts;
}

} // namespace vfFormats
