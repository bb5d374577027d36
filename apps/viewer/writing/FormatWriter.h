// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// Writes a scene in the format of the file's extension: obj, stl, 3ds, ac, dxf, osgt, osgb or ive. To be called in a process
/// that does nothing else: writers may crash, and print what they like, and the current directory is another one afterwards.
///
/// What belongs to the model, as the materials and images of an OBJ file, is written beside the file, under names that do
/// not take the place of files of others in the directory above: the file is to be moved there with them.
/// @param path  a new file in a directory of its own in that of the model
/// @return why it could not be written, in one line; empty when it was
std::string writeFormat(osg::Node& scene, const std::string& path);

} // namespace vfViewer
