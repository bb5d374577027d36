// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Array>

#include <memory>
#include <vector>

namespace vfScene {

/// Points of a vertex array whose extent in any direction is that of all vertices, to within one hundredth: some thousands
/// for millions of vertices.
using ConvexHull = std::vector<osg::Vec3>;

/// Returns the hull of an array, computed at the first call and remembered until the array changes or is destroyed. Only for
/// the thread that shows scenes.
/// @param points  the array
VFSCENE_EXPORT std::shared_ptr<const ConvexHull> hullOf(const osg::Vec3Array& points);

/// Computes the hull of an array. May be called on any thread; pass the result to rememberHull() afterwards.
/// @param points  the array
VFSCENE_EXPORT std::shared_ptr<const ConvexHull> computeHull(const osg::Vec3Array& points);

/// Returns whether an array is so large that hullOf() remembers its hull; computing that of a small one again is cheap.
/// @param points  the array
VFSCENE_EXPORT bool isHullKept(const osg::Vec3Array& points);

/// Makes hullOf() return a hull that was computed before.
/// @param points  the array
/// @param hull    the result of computeHull() for it
VFSCENE_EXPORT void rememberHull(const osg::Vec3Array& points, const std::shared_ptr<const ConvexHull>& hull);

} // namespace vfScene
