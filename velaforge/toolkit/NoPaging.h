// SPDX-License-Identifier: MIT
#pragma once

namespace osgViewer {
class View;
}

namespace vfApplication {

/// Replaces the pagers of a view by ones that ignore every request, so that drawing reads no file: a scene
/// may name files to be loaded when the camera comes near. Call it after setSceneData(), which may make new
/// pagers.
void forbidPaging(osgViewer::View& view);

} // namespace vfApplication
