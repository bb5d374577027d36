// SPDX-License-Identifier: MIT
#include "model/SceneCommands.h"

#include <osg/Material>

namespace vfViewer {

SceneCommand::SceneCommand(const char* name, ModelScene& scene, osg::Node& node)
    : m_scene(&scene), m_node(&node)
{
    setName(name);
}

bool SceneCommand::Do(const vfBase::VfVariant&)
{
    if (!m_scene->contains(*m_node) || !apply())
        return false;
    m_scene->changed();
    return true;
}

bool SceneCommand::undo(const vfBase::VfVariant&)
{
    revert();
    m_scene->changed();
    return true;
}

ShowCommand::ShowCommand(ModelScene& scene, osg::Node& node, bool show)
    : SceneCommand(show ? "Show" : "Hide", scene, node), m_show(show)
{}

bool ShowCommand::apply()
{
    m_before = node().getNodeMask();
    node().setNodeMask(m_show ? ~0u : 0u);
    return true;
}

void ShowCommand::revert()
{
    node().setNodeMask(m_before);
}

RemoveCommand::RemoveCommand(ModelScene& scene, osg::Node& node) : SceneCommand("Remove", scene, node) {}

bool RemoveCommand::apply()
{
    m_places.clear();
    for (const osg::ref_ptr<osg::Group>& parent : scene().parentsOf(node())) {
        const unsigned int index = parent->getChildIndex(&node());
        m_places.push_back({parent, index});
        parent->removeChild(index);
    }
    return true;
}

void RemoveCommand::revert()
{
    for (auto place = m_places.rbegin(); place != m_places.rend(); ++place)
        place->parent->insertChild(place->index, &node());
}

MoveCommand::MoveCommand(ModelScene& scene, osg::Node& node, const osg::Vec3d& offset)
    : SceneCommand("Move", scene, node), m_transform(new osg::MatrixTransform(osg::Matrix::translate(offset)))
{}

bool MoveCommand::apply()
{
    m_parents = scene().parentsOf(node());
    m_transform->addChild(&node());
    for (const osg::ref_ptr<osg::Group>& parent : m_parents)
        parent->replaceChild(&node(), m_transform);
    return true;
}

void MoveCommand::revert()
{
    for (const osg::ref_ptr<osg::Group>& parent : m_parents)
        parent->replaceChild(m_transform, &node());
    m_transform->removeChild(&node());
}

ColorCommand::ColorCommand(ModelScene& scene, osg::Node& node, const osg::Vec4& color)
    : SceneCommand("Set colour", scene, node), m_color(color)
{}

bool ColorCommand::apply()
{
    m_before = node().getStateSet();
    if (!m_after) {
        m_after = m_before ? osg::clone(m_before.get(), osg::CopyOp::SHALLOW_COPY) : new osg::StateSet;
        const osg::ref_ptr<osg::Material> material = new osg::Material;
        material->setColorMode(osg::Material::OFF);
        material->setAmbient(osg::Material::FRONT_AND_BACK, m_color);
        material->setDiffuse(osg::Material::FRONT_AND_BACK, m_color);
        material->setSpecular(osg::Material::FRONT_AND_BACK, {0.15f, 0.15f, 0.15f, m_color.a()});
        material->setShininess(osg::Material::FRONT_AND_BACK, 30);
        m_after->setAttributeAndModes(material, osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
        if (m_color.a() < 1) {
            m_after->setMode(GL_BLEND, osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
            m_after->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
        }
    }
    node().setStateSet(m_after);
    return true;
}

void ColorCommand::revert()
{
    node().setStateSet(m_before);
}

} // namespace vfViewer
