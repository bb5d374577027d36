// SPDX-License-Identifier: MIT
#pragma once

namespace osg {
class Geometry;
}

namespace vfViewer {

/// Takes from a geometry what would lead whoever draws it beyond its arrays: primitives of points that are not there, and
/// colours, normals and texture places that are fewer than the points.
/// @return whether something was taken
bool makeSound(osg::Geometry& geometry);

} // namespace vfViewer
