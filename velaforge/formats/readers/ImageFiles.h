// SPDX-License-Identifier: MIT
#pragma once

#include <osg/Image>
#include <osg/ref_ptr>

#include <string>

namespace vfFormats {

/// Reads the image that a model names, wherever SideFiles finds it; FileGate tells why there is none.
/// @param directory  that of the file that names the image
/// @return null for an empty name, and when it cannot be read
osg::ref_ptr<osg::Image> readImageFile(const std::string& name, const std::string& directory);

/// @return the extension of the image format that these bytes begin like; empty for an unknown one
std::string imageFormatOf(const std::string& bytes);

} // namespace vfFormats
