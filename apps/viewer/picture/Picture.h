// SPDX-License-Identifier: MIT
#pragma once

#include "model/ModelView.h"

namespace vfViewer {

class ShownScene;

/// Draws a scene in its style, apart from any window.
/// @return the picture, the bottom row first; null with the reason
osg::ref_ptr<osg::Image> drawPicture(const ShownScene& scene, const CameraPlacement& camera,
                                     const vfApplication::SnapshotFormat& format, vfBase::VfString& reason);

} // namespace vfViewer
