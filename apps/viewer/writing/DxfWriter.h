// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// Writes the triangles of a model as a DXF file of release 12, a layer for each geometry. Colours are the nearest of the
/// format's 255; textures and normals, lines and points are left out.
/// @param target  an empty file, open
/// @return why it could not be written; empty when it was
std::string writeDxf(osg::Node& model, int target);

} // namespace vfViewer
