// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Geometry>
#include <osg/ref_ptr>

struct aiMesh;

namespace vfViewer {

/// @param textureChannel  the set of texture places that its material uses
/// @return the mesh as it is drawn; null for one of nothing
osg::ref_ptr<osg::Geometry> makeGeometry(const aiMesh& mesh, unsigned int textureChannel);

} // namespace vfViewer
