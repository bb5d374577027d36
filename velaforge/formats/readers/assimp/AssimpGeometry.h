// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/readers/assimp/AssimpMaterials.h>

#include <osg/Geometry>
#include <osg/ref_ptr>

struct aiMesh;

namespace vfFormats {

/// @param look  what its material asks for
/// @return the mesh as it is drawn; null for one of nothing
osg::ref_ptr<osg::Geometry> makeGeometry(const aiMesh& mesh, const MeshLook& look);

/// @return whether a mesh has colours that are drawn
bool hasVertexColors(const aiMesh& mesh);

} // namespace vfFormats
