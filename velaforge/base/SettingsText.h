// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfBase {

/// Encodes a text of any bytes as UTF-8, which JSON requires.
/// @return @p text itself if it is UTF-8; otherwise, and if it begins with "$bytes:", that mark followed by
///         the bytes in hexadecimal
std::string encodedSettingsText(const std::string& text);

/// Decodes the result of encodedSettingsText.
/// @return the bytes; @p text itself if the mark is missing or the digits are malformed, as in a text that a
///         user typed
std::string decodedSettingsText(const std::string& text);

} // namespace vfBase
