// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Group>
#include <osg/ref_ptr>

namespace vfViewer {

/// @return a group that shows @p scene in the viewer's light: one lamp above the left shoulder, one weaker on the
///         right, both going with the camera, and surfaces lit from both sides. The scene itself stays as it is.
osg::ref_ptr<osg::Group> makeLitScene(osg::Node& scene);

} // namespace vfViewer
