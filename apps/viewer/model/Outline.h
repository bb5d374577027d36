// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Array>

#include <memory>
#include <vector>

namespace vfViewer {

/// Points of an array between which all others lie, more or less: seen from any side, what they span differs from what all
/// span by less than a hundredth of its size. Of millions of points there are some thousands left.
///
/// They are worked out once for an array, and remembered as long as it stays as it is. May be called on any thread.
std::shared_ptr<const std::vector<osg::Vec3>> outlineOf(const osg::Vec3Array& points);

} // namespace vfViewer
