// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// Writes the faces of a model as an STL file in text, a solid for each of its parts.
/// @param path  a new file
/// @return why it could not be written; empty when it was
std::string writeStl(osg::Node& model, const std::string& path);

} // namespace vfViewer
