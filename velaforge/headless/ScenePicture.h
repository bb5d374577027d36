// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/headless/Export.h>
#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/scene/StandardView.h>

#include <osg/Image>
#include <osg/ref_ptr>

namespace vfScene {
class ShownScene;
}

namespace vfApplication {

/// Renders a scene in its style, without a window.
/// @param scene   the scene
/// @param camera  see vfScene::placeCamera()
/// @param format  size and kind of the picture; its turn is not used
/// @param reason  set to why there is no picture, otherwise unchanged
/// @return the picture, bottom row first; null on failure
VFAPPLICATIONHEADLESS_EXPORT osg::ref_ptr<osg::Image> renderPicture(const vfScene::ShownScene& scene,
                                                                    const vfScene::CameraPlacement& camera,
                                                                    const SnapshotFormat& format,
                                                                    vfBase::VfString& reason);

} // namespace vfApplication
