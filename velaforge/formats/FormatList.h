// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>

namespace vfFormats {

/// Returns a table of the formats of models and images as text, a line each: the extension, whether it is read and written,
/// the name.
VFFORMATS_EXPORT std::string listFormats();

/// Returns the name of the format with an extension, in lower case and without a dot; the extension for an unknown one.
VFFORMATS_EXPORT std::string formatName(const std::string& extension);

/// Returns whether the library that reads the formats of ReadBy::Assimp is installed.
VFFORMATS_EXPORT bool hasAssimp();

} // namespace vfFormats
