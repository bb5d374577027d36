// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Array>

#include <memory>
#include <vector>

namespace vfScene {

using ConvexHull = std::vector<osg::Vec3>;

/// Points of an array between which all others lie, more or less: seen from any side, what they span differs from what all
/// span by less than a hundredth of its size. Of millions of points there are some thousands left.
///
/// They are worked out once for an array, and remembered as long as it stays as it is. For the thread of the program.
VFSCENE_EXPORT std::shared_ptr<const ConvexHull> hullOf(const osg::Vec3Array& points);

/// The same, ahead of time: works them out, on any thread.
VFSCENE_EXPORT std::shared_ptr<const ConvexHull> computeHull(const osg::Vec3Array& points);

/// Returns whether there are so many points that their hull is kept; that of fewer is worked out whenever it is wanted.
VFSCENE_EXPORT bool isHullKept(const osg::Vec3Array& points);

/// Has hullOf() find what was worked out.
VFSCENE_EXPORT void rememberHull(const osg::Vec3Array& points, const std::shared_ptr<const ConvexHull>& hull);

} // namespace vfScene
