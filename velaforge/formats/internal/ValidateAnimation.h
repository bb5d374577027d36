// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

namespace osg {
class Node;
}

namespace vfFormats {

/// Removes from a node, not from its children, what would make its animation read outside its arrays: bone influences that
/// refer to missing vertices, morph targets with another number of vertices, and animations without a keyframe. Bounding
/// boxes of skinned geometries are computed from their vertices from here on.
VFFORMATS_EXPORT void validateAnimations(osg::Node& node);

} // namespace vfFormats
