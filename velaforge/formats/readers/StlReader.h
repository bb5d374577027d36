// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace vfFormats {

/// Reads a file of the format "stl", as numbers or as text. Each solid is a node of its name. Triangles are flat; colours
/// are as either of the two customs has them that put some into files of numbers.
ReadOutcome readStl(const std::string& path);

} // namespace vfFormats
