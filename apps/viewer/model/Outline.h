// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Array>

#include <memory>
#include <vector>

namespace vfViewer {

using Outline = std::vector<osg::Vec3>;

/// Points of an array between which all others lie, more or less: seen from any side, what they span differs from what all
/// span by less than a hundredth of its size. Of millions of points there are some thousands left.
///
/// They are worked out once for an array, and remembered as long as it stays as it is. For the thread of the program.
std::shared_ptr<const Outline> outlineOf(const osg::Vec3Array& points);

/// The same, ahead of time: works them out, on any thread.
std::shared_ptr<const Outline> workOutOutline(const osg::Vec3Array& points);

/// Returns whether there are so many points that their outline is kept; that of fewer is worked out whenever it is wanted.
bool isOutlineKept(const osg::Vec3Array& points);

/// Has outlineOf() find what was worked out.
void rememberOutline(const osg::Vec3Array& points, const std::shared_ptr<const Outline>& outline);

} // namespace vfViewer
