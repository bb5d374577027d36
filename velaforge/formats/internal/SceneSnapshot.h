// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <osg/Node>
#include <osg/ref_ptr>

namespace vfFormats {

/// Returns a copy of a scene that another thread may read and change while the scene is shown and changed: its nodes,
/// geometries and state are new, and shared where the scene shares them. Arrays and images are those of the scene, since
/// commands put others in their place and do not write to them.
/// @param isMoving  whether the scene moves by itself, which writes to arrays: they are copied, too
VFFORMATS_EXPORT osg::ref_ptr<osg::Node> snapshotOf(const osg::Node& scene, bool isMoving);

} // namespace vfFormats
