// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

namespace osg {
class Geometry;
}

namespace vfScene {

/// Gives the surfaces of a geometry normals, in place of what it has.
///
/// Faces that meet at a point become one curved surface there where they meet at less than the angle; elsewhere there is
/// an edge, and the point is doubled. Surfaces become triangles, each primitive set by itself; lines and points stay as
/// they are.
/// @param creaseAngle  in radians
VFSCENE_EXPORT void makeNormals(osg::Geometry& geometry, double creaseAngle);

} // namespace vfScene
