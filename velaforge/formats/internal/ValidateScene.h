// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <cstddef>

namespace osg {
class Node;
}

namespace vfFormats {

/// Validates the geometries and animations of a scene: removes what leads beyond their arrays, see validateGeometry() and
/// validateAnimations().
/// @return the number of nodes that were changed
VFFORMATS_EXPORT std::size_t validateScene(osg::Node& scene);

} // namespace vfFormats
