// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct WriteTarget;

/// Writes a model as an AC3D file, a polygon object for each geometry. Points are left out.
/// @param model   with the y axis up; its images are referred to by their file names
/// @param target  whose file of the model is written
/// @return why it could not be written; empty when it was
std::string writeAc(osg::Node& model, const WriteTarget& target);

} // namespace vfFormats
