// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

namespace osg {
class Geometry;
}

namespace vfFormats {

/// Removes from a geometry what would make drawing read outside its arrays: primitives that refer to missing vertices, and
/// arrays of colours, normals and texture coordinates with fewer elements than vertices.
/// @return whether something was removed
VFFORMATS_EXPORT bool validateGeometry(osg::Geometry& geometry);

} // namespace vfFormats
