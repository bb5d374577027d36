// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Geometry>
#include <osg/Material>
#include <osg/Node>
#include <osg/StateSet>

#include <cstddef>

namespace vfScene {

/// Numbers of OpenGL's lights. Lights of a file and lights of a view have different numbers, so that a view can switch
/// between them without changing the model.
struct LightNumbers
{
    static constexpr int ofFile = 4; ///< lights of a file have numbers below this one
    static constexpr int contrast =
        4;                         ///< lights lines and points without a colour when the background is dark
    static constexpr int key = 5;  ///< the main light of a view
    static constexpr int side = 6; ///< a weaker light from the side
    static constexpr int fill = 7; ///< a weak light opposite the main one
    static constexpr int end = 8;  ///< the number behind the last one
};

/// Removes the lights of a scene whose numbers are those of a view.
/// @param scene  changed in place
/// @return the number of lights removed
VFSCENE_EXPORT std::size_t removeSurplusLights(osg::Node& scene);

/// Sets the ambient colour of materials to their diffuse colour where it is darker. Many files contain no ambient colour or
/// a black one, with which faces that no light reaches would be black.
/// @param scene  changed in place
VFSCENE_EXPORT void brightenShade(osg::Node& scene);

/// Makes surfaces show the ambient colour of their material unchanged, without any light.
/// @param state  of the surfaces; changed in place
VFSCENE_EXPORT void setSelfLit(osg::StateSet& state);

/// Gives a geometry of lines and points a state of its own in which they show their colour unchanged: that of their
/// vertices, otherwise that of their material, otherwise one that contrasts with the background. A geometry with faces
/// stays as it is.
/// @param geometry   changed in place
/// @param inherited  the material of the nodes above it; null for none
VFSCENE_EXPORT void setSelfLit(osg::Geometry& geometry, const osg::Material* inherited);

} // namespace vfScene
