// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Drawable>
#include <osg/ref_ptr>

namespace vfScene {

/// Returns the draw callback for the drawables of models, which all share.
///
/// A transform that mirrors reverses the order of the corners of a triangle. The callback tells OpenGL so, each time the
/// drawable is drawn: otherwise front and back would change places, and light would fall on the wrong side. One drawable
/// may be drawn mirrored in one place and not in another, and an animation or the user may mirror it at any time.
VFSCENE_EXPORT osg::ref_ptr<osg::Drawable::DrawCallback> mirrorCallback();

} // namespace vfScene
