// SPDX-License-Identifier: MIT
#include <velaforge/scene/NodeKind.h>

#include <velaforge/scene/ModelScene.h>
#include <velaforge/scene/SceneCommands.h>

#include <osg/Geode>
#include <osg/Geometry>

#include <algorithm>

namespace vfScene {

namespace {

/// What is drawn, in rising order of what names the whole.
enum class Drawn
{
    Nothing,
    Points,
    Lines,
    Mesh
};

Drawn drawnBy(const osg::Drawable& drawable)
{
    const osg::Geometry* geometry = drawable.asGeometry();
    if (!geometry)
        return Drawn::Mesh;
    Drawn most = Drawn::Nothing;
    for (const osg::ref_ptr<osg::PrimitiveSet>& primitives : geometry->getPrimitiveSetList()) {
        const GLenum mode = primitives->getMode();
        const Drawn drawn = mode == GL_POINTS       ? Drawn::Points
                            : mode <= GL_LINE_STRIP ? Drawn::Lines
                                                    : Drawn::Mesh;
        most = std::max(most, drawn);
    }
    return most;
}

} // namespace

const char* kindOf(const osg::Node& node)
{
    Drawn most = Drawn::Nothing;
    if (const osg::Drawable* drawable = node.asDrawable())
        most = drawnBy(*drawable);
    if (const osg::Group* group = node.asGroup()) {
        for (unsigned int i = 0; i < group->getNumChildren(); ++i) {
            if (const osg::Drawable* drawable = group->getChild(i)->asDrawable())
                most = std::max(most, drawnBy(*drawable));
        }
    }
    switch (most) {
    case Drawn::Mesh:
        return "Mesh";
    case Drawn::Lines:
        return "Lines";
    case Drawn::Points:
        return "Points";
    case Drawn::Nothing:
        break;
    }
    return "Group";
}

std::string nameOf(const osg::Node& node, const ModelScene& scene, const std::string& title)
{
    if (!node.getName().empty())
        return node.getName();
    const osg::Group& root = scene.root();
    const bool isWhole = &node == &root || (root.getNumChildren() == 1 && root.getChild(0) == &node);
    return isWhole ? title : std::string();
}

std::vector<osg::Node*> shownChildren(osg::Group& group)
{
    std::vector<osg::Node*> children;
    for (unsigned int i = 0; i < group.getNumChildren(); ++i) {
        osg::Node* child = group.getChild(i);
        // Without a part it is what a removed part has left behind.
        while (child && TransformCommand::isPlacement(*child)) {
            osg::Group& placement = *child->asGroup();
            child = placement.getNumChildren() > 0 ? placement.getChild(0) : nullptr;
        }
        if (child)
            children.push_back(child);
    }
    return children;
}

} // namespace vfScene
