// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

namespace vfFormats {

/// Makes OpenSceneGraph refuse to read any file in this process: models, images, archives, shaders, scripts, and the files
/// that a scene names to be loaded later. Its plug-ins, with which a program may write images, are loaded from
/// OpenSceneGraph's own directory only, never from the current one. For programs that read files through ReadJob, whose
/// processes do the reading. Must be called before the process has threads; a second call changes nothing.
VFFORMATS_EXPORT void installReadGuard();

} // namespace vfFormats
