// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Camera>
#include <osg/Vec3f>
#include <osg/ref_ptr>

namespace vfApplication {

/// @return what draws two triangles behind everything, from one colour at the bottom to another at the top
osg::ref_ptr<osg::Camera> makeGradientBackground(const osg::Vec3f& top, const osg::Vec3f& bottom);

} // namespace vfApplication
