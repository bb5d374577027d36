// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Node>
#include <osg/ref_ptr>

namespace vfFormats {

// In the viewer z points up: Format tells where y does.

/// @return a scene that shows @p scene turned by a quarter about the x axis, from y up to z up
osg::ref_ptr<osg::Node> withZUp(osg::Node& scene);

/// The way back: from z up to y up.
osg::ref_ptr<osg::Node> withYUp(osg::Node& scene);

} // namespace vfFormats
