// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// Writes a model as an OBJ file, and the materials of what it shows to a file beside it.
/// @param model         with the y axis up
/// @param path          a new file
/// @param materialPath  a new file in the same directory, made only where there are materials
/// @param owner         named in the first line of the materials, see materialsOwner()
/// @return why it could not be written; empty when it was
std::string writeObj(osg::Node& model, const std::string& path, const std::string& materialPath,
                     const std::string& owner);

/// Returns the first line of the materials that this program writes for the model file of that name.
std::string materialsOwner(const std::string& modelName);

} // namespace vfViewer
