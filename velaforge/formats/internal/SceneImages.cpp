// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/SceneImages.h>

#include <osg/StateSet>
#include <osg/Texture>

namespace vfFormats {

FindImages::FindImages() : NodeVisitor(TRAVERSE_ALL_CHILDREN)
{
    setNodeMaskOverride(~0u);
}

void FindImages::apply(osg::Node& node)
{
    traverse(node);
    const osg::StateSet* state = node.getStateSet();
    if (!state || !m_seen.insert(state).second)
        return;
    for (const osg::StateSet::AttributeList& list : state->getTextureAttributeList()) {
        for (const auto& [type, entry] : list) {
            osg::Texture* texture = entry.first->asTexture();
            for (unsigned int i = 0; texture && i < texture->getNumImages(); ++i) {
                osg::Image* image = texture->getImage(i);
                if (image && m_seen.insert(image).second)
                    images.emplace_back(image);
            }
        }
    }
}

} // namespace vfFormats
