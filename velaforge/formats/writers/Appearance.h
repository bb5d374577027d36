// SPDX-License-Identifier: MIT
#pragma once

#include <osg/StateSet>

namespace osg {
class Image;
class Material;
class TexMat;
class Texture;
} // namespace osg

namespace vfFormats {

/// The material and the texture that apply to a part, inherited from the nodes above it as OpenSceneGraph does.
///
/// Points to objects of the scene, which must outlive it.
class Appearance
{
public:
    const osg::Material* material = nullptr;
    const osg::Texture* texture = nullptr; ///< of unit 0
    const osg::TexMat* placement = nullptr;

    /// Returns whether there is neither a material nor an image.
    bool isEmpty() const { return !material && !image(); }

    /// Returns the image of the texture; null if there is none.
    const osg::Image* image() const;

    bool operator<(const Appearance& other) const;

    /// Applies the state of a node below, which may be null.
    void apply(const osg::StateSet* state);

private:
    /// Whether an attribute of a kind has OVERRIDE, so that nodes below do not replace it.
    struct Inherited
    {
        template <class Kind>
        void apply(const osg::StateSet::RefAttributePair* pair, const Kind*& applied);
        bool isForced = false;
    };

    Inherited m_material;
    Inherited m_texture;
    Inherited m_placement;
};

} // namespace vfFormats
