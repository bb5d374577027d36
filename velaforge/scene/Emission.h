// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Image>
#include <osg/StateSet>
#include <osg/Texture2D>
#include <osg/Vec3>

namespace vfScene {

/// The texture unit of emission, which is added to the lit surface.
constexpr unsigned int emissionUnit = 1;

/// Adds an emission texture to a state. Surfaces need texture coordinates for `emissionUnit`.
/// @param state  changed in place
/// @param image  the texture's image; null for one colour everywhere, which no other texture darkens
/// @param color  a factor for each pixel; black adds no texture
/// @return the texture, owned by @p state; null when none was added
VFSCENE_EXPORT osg::Texture2D* addEmission(osg::StateSet& state, const osg::Image* image,
                                           const osg::Vec3& color);

} // namespace vfScene
