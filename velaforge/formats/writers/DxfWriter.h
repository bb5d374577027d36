// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct WriteTarget;

/// Writes the triangles of a model as a DXF file of release 12, a layer for each geometry. Colours are the nearest of the
/// format's 255; textures and normals, lines and points are left out.
/// @param target  whose file of the model is written
/// @return why it could not be written; empty when it was
std::string writeDxf(osg::Node& model, const WriteTarget& target);

} // namespace vfFormats
