// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/scene/Export.h>

#include <osg/Drawable>
#include <osg/ref_ptr>

namespace vfScene {

/// Returns the draw callback for the drawables of a model; all of them share one.
///
/// A transform that mirrors reverses the winding of faces, so that OpenGL would take the front for the back and light the
/// wrong side. The callback sets the winding for each drawable when it is drawn, because one drawable may be drawn both
/// mirrored and not, and an animation or the user may mirror it at any time.
VFSCENE_EXPORT osg::ref_ptr<osg::Drawable::DrawCallback> mirrorCallback();

} // namespace vfScene
