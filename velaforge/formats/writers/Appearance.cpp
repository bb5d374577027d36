// SPDX-License-Identifier: MIT
#include <velaforge/formats/writers/Appearance.h>

#include <osg/Material>
#include <osg/TexMat>
#include <osg/Texture>

#include <tuple>

namespace vfFormats {

const osg::Image* Appearance::image() const
{
    return texture && texture->getNumImages() > 0 ? texture->getImage(0) : nullptr;
}

bool Appearance::operator<(const Appearance& other) const
{
    return std::tie(material, texture, placement) < std::tie(other.material, other.texture, other.placement);
}

void Appearance::apply(const osg::StateSet* state)
{
    if (!state)
        return;
    m_material.apply(state->getAttributePair(osg::StateAttribute::MATERIAL), material);
    m_texture.apply(state->getTextureAttributePair(0, osg::StateAttribute::TEXTURE), texture);
    m_placement.apply(state->getTextureAttributePair(0, osg::StateAttribute::TEXMAT), placement);
}

template <class Kind>
void Appearance::Inherited::apply(const osg::StateSet::RefAttributePair* pair, const Kind*& applied)
{
    const auto* own = pair ? dynamic_cast<const Kind*>(pair->first.get()) : nullptr;
    if (!own || (isForced && !(pair->second & osg::StateAttribute::PROTECTED)))
        return;
    applied = own;
    isForced = (pair->second & osg::StateAttribute::OVERRIDE) != 0;
}

} // namespace vfFormats
