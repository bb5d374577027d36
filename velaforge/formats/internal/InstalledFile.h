// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>

namespace vfFormats {

/// Returns the path of a file that is installed with this library, in the folder "velaforge" beside it.
VFFORMATS_EXPORT std::string installedFile(const std::string& name);

/// Returns the path of the library that reads the formats of ReadBy::Assimp, installed or not.
VFFORMATS_EXPORT std::string assimpLibrary();

} // namespace vfFormats
