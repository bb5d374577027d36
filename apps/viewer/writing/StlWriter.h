// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// Writes the faces of a model as an STL file in text, a solid for each of its parts.
/// @param target  an empty file, open
/// @return why it could not be written; empty when it was
std::string writeStl(osg::Node& model, int target);

} // namespace vfViewer
