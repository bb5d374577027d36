// SPDX-License-Identifier: MIT
#include "model/ModelScene.h"

#include "model/ModelDocument.h"

#include <algorithm>

namespace vfViewer {

void ModelScene::setModel(osg::Node* model)
{
    const osg::ref_ptr<osg::Node> kept = model; // may be what is taken out
    m_root->removeChildren(0, m_root->getNumChildren());
    if (kept)
        m_root->addChild(kept);
}

bool ModelScene::contains(const osg::Node& node) const
{
    const osg::Node::ParentList& parents = node.getParents();
    return std::any_of(parents.begin(), parents.end(),
                       [this](const osg::Group* parent) { return holds(*parent); });
}

bool ModelScene::holds(const osg::Group& group) const
{
    return &group == m_root.get() || contains(group);
}

std::vector<osg::ref_ptr<osg::Group>> ModelScene::parentsOf(const osg::Node& node) const
{
    std::vector<osg::ref_ptr<osg::Group>> inside;
    for (osg::Group* parent : node.getParents()) {
        if (holds(*parent))
            inside.emplace_back(parent);
    }
    return inside;
}

void ModelScene::changed()
{
    if (!m_document)
        return;
    m_document->modify(true);
    m_document->updateAllViews(nullptr);
}

} // namespace vfViewer
