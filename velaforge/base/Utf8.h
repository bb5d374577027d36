// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vfBase {

/// @return length in bytes, 1 to 4, of the character that begins at @p pos; 0 where there is none in UTF-8
std::size_t utf8SequenceLength(const std::string& text, std::size_t pos);

} // namespace vfBase
