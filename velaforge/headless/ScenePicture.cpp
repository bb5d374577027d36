// SPDX-License-Identifier: MIT
#include <velaforge/headless/ScenePicture.h>

#include <velaforge/headless/OffscreenRenderer.h>
#include <velaforge/scene/ShownScene.h>

namespace vfApplication {

osg::ref_ptr<osg::Image> renderPicture(const vfScene::ShownScene& scene,
                                       const vfScene::CameraPlacement& camera, const SnapshotFormat& format,
                                       vfBase::VfString& reason)
{
    const vfScene::Background background = scene.getBackground();
    OffscreenRenderer renderer;
    renderer.setBackground(background.top, background.bottom);
    renderer.setTransparent(format.isTransparent);
    renderer.setSmooth(scene.getStyle().isAntialiased);
    return renderer.render(scene.root(), camera.view, camera.projection, format.width, format.height, reason);
}

} // namespace vfApplication
