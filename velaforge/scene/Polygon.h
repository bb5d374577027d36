// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Vec3>
#include <osg/Vec3d>

#include <vector>

namespace vfScene {

/// Cuts a polygon into triangles.
/// @param points  its corners in order, in a plane more or less
/// @param triangles  gets three numbers of corners for each triangle, which run as the polygon does; one triangle less
///        than there are corners, whatever the polygon looks like
VFSCENE_EXPORT void triangulate(const std::vector<osg::Vec3>& points, std::vector<unsigned int>& triangles);

} // namespace vfScene
