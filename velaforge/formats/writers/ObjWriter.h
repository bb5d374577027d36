// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct WriteTarget;

/// Writes a model as an OBJ file, and the materials of what it shows to a file beside it.
/// @param model   with the y axis up
/// @param target  whose file of materials stays empty where there are none
/// @return why it could not be written; empty when it was
std::string writeObj(osg::Node& model, const WriteTarget& target);

} // namespace vfFormats
