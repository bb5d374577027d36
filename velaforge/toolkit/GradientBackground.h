// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Vec3f>
#include <osg/ref_ptr>

namespace osg {
class Camera;
}

namespace vfApplication {

/// Returns a camera that draws the background behind the scene: a gradient from the colour at the bottom to
/// the colour at the top.
osg::ref_ptr<osg::Camera> makeGradientBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

} // namespace vfApplication
