// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <cstddef>
#include <string_view>

namespace vfFormats {

constexpr std::size_t stlHeaderSize = 84; ///< 80 letters, and the number of triangles
constexpr std::size_t stlTriangleSize = 50;

/// @return whether the contents of a file of the format "stl" are text; otherwise they are numbers
VFFORMATS_EXPORT bool isStlText(std::string_view contents);

/// Compares a word of such a text without regard to capitals. @param lower  in lower case
VFFORMATS_EXPORT bool isStlWord(std::string_view word, std::string_view lower);

} // namespace vfFormats
