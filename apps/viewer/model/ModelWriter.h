// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <string>

namespace osg {
class Node;
}

namespace vfViewer {

/// @return the formats that writeModel knows, with commas between them
std::string writableFormats();

/// Writes a scene in the format of the file's extension: obj, stl, 3ds, ac, dxf, osgt, osgb or ive.
///
/// The file, and what belongs to it as an OBJ file's materials, is written into a directory of its own first and takes
/// its place when it is whole and can be read again.
/// @param reason  why it could not be written
/// @return false with the files as they were, save that of several files the later ones may be missing when a move
///         within one directory fails half way
bool writeModel(osg::Node& scene, const vfBase::VfString& path, vfBase::VfString& reason);

} // namespace vfViewer
