// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vfBase {

/// Returns the length of the character that begins at @p pos.
/// @param text  the text
/// @param pos   index of a byte, less than the size of @p text
/// @return the length in bytes, 1 to 4; 0 if the bytes are not well-formed UTF-8: truncated, overlong, a
///         surrogate, or beyond U+10FFFF
std::size_t utf8SequenceLength(const std::string& text, std::size_t pos);

} // namespace vfBase
