// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Material>
#include <osg/Node>
#include <osg/StateSet>

#include <string>

namespace vfScene {

/// The numbers of OpenGL's lamps. Those of a file and those of the viewer have numbers of their own, so that a view can
/// choose between them without changing the model.
struct Lamps
{
    static constexpr int ofFile = 4; ///< a file may have those below this number
    static constexpr int contrast =
        4; ///< shines on lines and points without a colour where the background is dark
    static constexpr int key = 5;
    static constexpr int side = 6;
    static constexpr int fill = 7;
    static constexpr int end = 8;
};

/// Removes the lamps of a scene whose numbers are those of the viewer.
/// @return how many were removed
VFSCENE_EXPORT std::size_t removeSurplusLamps(osg::Node& scene);

/// Makes materials reflect as much of the light around as of lamps: most files say nothing of the one, or that it is
/// black, and what no lamp reaches would be black.
VFSCENE_EXPORT void brightenShade(osg::Node& scene);

/// Makes surfaces show the ambient colour of their material as it is, without any lamp.
VFSCENE_EXPORT void setSelfLit(osg::StateSet& state);

/// Gives lines and points without a surface a state of their own, in which they show their colour as it is: that of their
/// vertices, else that of their material, else one that contrasts with the background.
/// @param inherited  the material that they have from the nodes above; null for none
VFSCENE_EXPORT void setSelfLit(osg::Geometry& geometry, const osg::Material* inherited);

} // namespace vfScene
