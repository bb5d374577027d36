// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Drawable>
#include <osg/ref_ptr>

namespace vfViewer {

/// Returns the draw callback for the drawables of models, which all share.
///
/// A transform that mirrors reverses the order of the corners of a triangle. The callback tells OpenGL so, each time the
/// drawable is drawn: otherwise front and back would change places, and light would fall on the wrong side. One drawable
/// may be drawn mirrored in one place and not in another, and an animation or the user may mirror it at any time.
osg::ref_ptr<osg::Drawable::DrawCallback> mirrorCallback();

} // namespace vfViewer
