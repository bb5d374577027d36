// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

namespace osg {
class Node;
}

namespace vfScene {

/// Prepares a scene so that light shows all of it: computes missing normals, turns normals that point away from the visible
/// side of their face, and makes lines and points, which light does not reach, show their own colour.
/// @param scene  changed in place
VFSCENE_EXPORT void prepareLighting(osg::Node& scene);

} // namespace vfScene
