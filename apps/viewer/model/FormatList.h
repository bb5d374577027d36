// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfViewer {

/// @return the formats of models and images, a line each: its extension, whether it is read and written, its name
std::string listFormats();

/// @return the name of the format with that extension, in lower case and without a dot; the extension for an unknown one
std::string formatName(const std::string& extension);

} // namespace vfViewer
