// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace osg {
class Node;
}

namespace vfViewer {

/// Validates the geometries and animations of a scene: removes what leads beyond their arrays, see makeSound() and
/// makeAnimationSound().
/// @return the number of nodes that were changed
std::size_t makeSceneSound(osg::Node& scene);

} // namespace vfViewer
