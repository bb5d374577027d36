// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfFormats {

/// Looks for the end of a model file, as its format announces it.
///
/// Most readers take what they find in a file that was cut off, and some crash on it. Formats that say how long they
/// are, or that close what they open, can tell; an OBJ file can do so only where it ends within a statement.
/// @return true when the file at @p path surely ends too early; false too for formats that are not looked at here,
///         and for files that cannot be read
bool isCutOff(const std::string& path);

} // namespace vfFormats
