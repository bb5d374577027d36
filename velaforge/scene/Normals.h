// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

namespace osg {
class Geometry;
}

namespace vfScene {

/// Replaces the normals of the faces of a geometry.
///
/// Adjacent faces are smooth where they meet at less than the crease angle; elsewhere the edge is sharp, and its vertices are
/// duplicated. Each primitive set with faces becomes one of triangles; lines and points stay as they are.
/// @param geometry     changed in place
/// @param creaseAngle  in radians
VFSCENE_EXPORT void makeNormals(osg::Geometry& geometry, double creaseAngle);

} // namespace vfScene
