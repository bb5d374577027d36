// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct WriteTarget;

/// Writes the faces of a model as an STL file in text, a solid for each of its parts.
/// @param target  whose file of the model is written
/// @return why it could not be written; empty when it was
std::string writeStl(osg::Node& model, const WriteTarget& target);

} // namespace vfFormats
