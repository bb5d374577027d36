// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Image>
#include <osg/StateSet>
#include <osg/Texture2D>
#include <osg/Vec3>

namespace vfScene {

/// The texture unit of what a surface emits. The picture of it is added to the lit surface.
constexpr unsigned int emissionUnit = 1;

/// Makes surfaces emit the picture, each pixel multiplied by a colour. Surfaces need texture coordinates for the unit.
/// @param image  null for one colour everywhere, which no other texture darkens
/// @param color  nothing is done for black
/// @return the texture; null where nothing was done
VFSCENE_EXPORT osg::Texture2D* addEmission(osg::StateSet& state, const osg::Image* image,
                                           const osg::Vec3& color);

} // namespace vfScene
