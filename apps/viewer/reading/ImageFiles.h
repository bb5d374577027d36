// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Image>
#include <osg/ref_ptr>

#include <string>

namespace vfViewer {

/// Finds the image or other file that a model names.
///
/// Models are often made on another machine: the name may be an absolute path of that machine, with drive letters and
/// backslashes, in quotation marks, with other capitals than the file, or with "%20" for a space; and the image may lie
/// beside the model or in a folder "textures" there. No folder above the model's is searched.
/// @param directory  that of the file that names the image
/// @return the path of a regular file; empty when there is none
std::string findSideFile(const std::string& name, const std::string& directory);

/// Reads the image that a model names; FileGate tells why there is none.
/// @return null for an empty name, and when it cannot be read
osg::ref_ptr<osg::Image> readImageFile(const std::string& name, const std::string& directory);

/// @return the extension of the image format that these bytes begin like; empty for an unknown one
std::string imageFormatOf(const std::string& bytes);

} // namespace vfViewer
