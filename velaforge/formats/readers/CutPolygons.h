// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Node>

namespace vfFormats {

/// Cuts the polygons of a scene into triangles: OpenGL draws them as fans and fills the dents of those that have some.
void cutPolygons(osg::Node& scene);

} // namespace vfFormats
