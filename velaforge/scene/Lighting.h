// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

namespace osg {
class Node;
}

namespace vfScene {

/// Has light fall on all that a scene shows: lines and points, which cannot be lit, shine by themselves, surfaces without
/// normals get some, and normals that point away from the side that is seen are turned.
VFSCENE_EXPORT void prepareLighting(osg::Node& scene);

} // namespace vfScene
