// SPDX-License-Identifier: MIT
#include "reading/SceneBlocks.h"

#include <osg/StateSet>
#include <osg/Texture>

#include <cstdlib>
#include <cstring>

namespace vfViewer {

namespace {

/// Calls @p work with each texture of a state.
template <class Work>
void eachTexture(const osg::StateSet& state, Work work)
{
    for (const osg::StateSet::AttributeList& list : state.getTextureAttributeList()) {
        for (const auto& [type, entry] : list) {
            if (osg::Texture* texture = entry.first->asTexture())
                work(*texture);
        }
    }
}

osg::ref_ptr<osg::Object> emptyLike(const osg::BufferData& data)
{
    osg::ref_ptr<osg::Object> other = data.cloneType();
    other->setName(data.getName());
    if (const auto* array = dynamic_cast<const osg::Array*>(&data)) {
        auto& empty = dynamic_cast<osg::Array&>(*other);
        empty.setBinding(array->getBinding());
        empty.setNormalize(array->getNormalize());
        empty.setPreserveDataType(array->getPreserveDataType());
    } else {
        dynamic_cast<osg::DrawElements&>(*other).setMode(
            dynamic_cast<const osg::DrawElements&>(data).getMode());
    }
    return other;
}

osg::ref_ptr<osg::Object> pixelLike(const osg::Image& image)
{
    const osg::ref_ptr<osg::Image> pixel = new osg::Image;
    pixel->allocateImage(1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    std::memset(pixel->data(), 0xff, 4);
    pixel->setName(image.getName());
    pixel->setFileName(image.getFileName());
    pixel->setWriteHint(image.getWriteHint());
    pixel->setOrigin(image.getOrigin());
    return pixel;
}

} // namespace

FindBlocks::FindBlocks() : NodeVisitor(TRAVERSE_ALL_CHILDREN)
{
    setNodeMaskOverride(~0u);
}

void FindBlocks::apply(osg::Node& node)
{
    add(node.getStateSet());
    traverse(node);
}

void FindBlocks::apply(osg::Geometry& geometry)
{
    add(geometry.getStateSet());
    osg::Geometry::ArrayList found;
    geometry.getArrayList(found);
    for (const auto& array : found)
        add(*array);
    for (const auto& primitives : geometry.getPrimitiveSetList()) {
        if (auto* indices = dynamic_cast<osg::DrawElements*>(primitives.get()))
            add(*indices);
    }
}

void FindBlocks::add(osg::StateSet* state)
{
    if (!state || !m_seen.insert(state).second)
        return;
    eachTexture(*state, [this](osg::Texture& texture) {
        for (unsigned int i = 0; i < texture.getNumImages(); ++i) {
            osg::Image* image = texture.getImage(i);
            if (image && m_seen.insert(image).second)
                images.emplace_back(image);
        }
    });
}

void FindBlocks::add(osg::BufferData& data)
{
    if (m_seen.insert(&data).second)
        arrays.emplace_back(&data);
}

DetachBlocks::DetachBlocks() : NodeVisitor(TRAVERSE_ALL_CHILDREN)
{
    setNodeMaskOverride(~0u);
}

void DetachBlocks::add(osg::BufferData& data)
{
    m_others[&data] = emptyLike(data);
}

void DetachBlocks::add(osg::Image& image)
{
    m_others[&image] = pixelLike(image);
}

void DetachBlocks::apply(osg::Node& node)
{
    detach(node.getStateSet());
    traverse(node);
}

void DetachBlocks::apply(osg::Geometry& geometry)
{
    detach(geometry.getStateSet());
    if (!m_seen.insert(&geometry).second)
        return;
    const auto other = [this](const osg::Array* array) {
        const auto found = array ? m_others.find(array) : m_others.end();
        return found == m_others.end() ? nullptr : dynamic_cast<osg::Array*>(found->second.get());
    };
    if (osg::Array* array = other(geometry.getVertexArray()))
        geometry.setVertexArray(array);
    if (osg::Array* array = other(geometry.getNormalArray()))
        geometry.setNormalArray(array);
    if (osg::Array* array = other(geometry.getColorArray()))
        geometry.setColorArray(array);
    if (osg::Array* array = other(geometry.getSecondaryColorArray()))
        geometry.setSecondaryColorArray(array);
    if (osg::Array* array = other(geometry.getFogCoordArray()))
        geometry.setFogCoordArray(array);
    for (unsigned int i = 0; i < geometry.getNumTexCoordArrays(); ++i) {
        if (osg::Array* array = other(geometry.getTexCoordArray(i)))
            geometry.setTexCoordArray(i, array);
    }
    for (unsigned int i = 0; i < geometry.getNumVertexAttribArrays(); ++i) {
        if (osg::Array* array = other(geometry.getVertexAttribArray(i)))
            geometry.setVertexAttribArray(i, array);
    }
    for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
        const auto found = m_others.find(geometry.getPrimitiveSet(i));
        if (found != m_others.end())
            geometry.setPrimitiveSet(i, dynamic_cast<osg::PrimitiveSet*>(found->second.get()));
    }
}

void DetachBlocks::detach(osg::StateSet* state)
{
    if (!state || !m_seen.insert(state).second)
        return;
    eachTexture(*state, [this](osg::Texture& texture) {
        for (unsigned int i = 0; i < texture.getNumImages(); ++i) {
            const auto found = m_others.find(texture.getImage(i));
            if (texture.getImage(i) && found != m_others.end())
                texture.setImage(i, dynamic_cast<osg::Image*>(found->second.get()));
        }
    });
}

} // namespace vfViewer
