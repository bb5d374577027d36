// SPDX-License-Identifier: MIT
#include "picture/Picture.h"

#include "model/ShownScene.h"
#include "model/ViewerSettings.h"

#include <velaforge/headless/OffscreenRenderer.h>

namespace vfViewer {

osg::ref_ptr<osg::Image> drawPicture(const ShownScene& scene, const CameraPlacement& camera,
                                     const vfApplication::SnapshotFormat& format, vfBase::VfString& reason)
{
    const ViewStyle& style = scene.getStyle();
    const Background background = style.background.value_or(Background{
        ViewerSettings::instance().getBackgroundTop(), ViewerSettings::instance().getBackgroundBottom()});
    vfApplication::OffscreenRenderer renderer;
    renderer.setBackground(background.top, background.bottom);
    renderer.setTransparent(format.isTransparent);
    renderer.setSmooth(style.isAntialiased);
    return renderer.render(scene.root(), camera.view, camera.projection, format.width, format.height, reason);
}

} // namespace vfViewer
