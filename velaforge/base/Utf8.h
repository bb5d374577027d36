// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vfBase {

/// Measures the character that begins at @p pos.
/// @param pos  must be less than the size of @p text
/// @return its length in bytes, 1 to 4; 0 where the bytes are no well-formed UTF-8: a character that is cut
///         off, overlong, a surrogate, or beyond U+10FFFF
std::size_t utf8SequenceLength(const std::string& text, std::size_t pos);

} // namespace vfBase
