// SPDX-License-Identifier: MIT
#pragma once

namespace osg {
class Geometry;
}

namespace vfViewer {

/// Removes from a geometry what would make drawing read outside its arrays: primitives that refer to missing vertices, and
/// arrays of colours, normals and texture coordinates with fewer elements than vertices.
/// @return whether something was removed
bool makeSound(osg::Geometry& geometry);

} // namespace vfViewer
