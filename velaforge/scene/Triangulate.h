// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Vec3>

#include <vector>

namespace vfScene {

/// Splits a polygon into triangles, concave ones and ones with collinear corners too.
/// @param points     the corners in order, roughly in a plane
/// @param triangles  three indices of corners are appended for each triangle, in the winding of the polygon: two triangles
///                   less than there are corners for any polygon, self-intersecting ones included
VFSCENE_EXPORT void triangulate(const std::vector<osg::Vec3>& points, std::vector<unsigned int>& triangles);

} // namespace vfScene
