// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>

namespace vfFormats {

/// @return the formats of models and images, a line each: its extension, whether it is read and written, its name
VFFORMATS_EXPORT std::string listFormats();

/// @return the name of the format with that extension, in lower case and without a dot; the extension for an unknown one
VFFORMATS_EXPORT std::string formatName(const std::string& extension);

/// Returns whether the library is installed that reads the formats of ReadBy::Assimp.
VFFORMATS_EXPORT bool hasAssimp();

} // namespace vfFormats
