// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfBase {

/// Makes UTF-8 of a text that may hold any byte, as JSON demands.
/// @return @p text itself where it is UTF-8; otherwise, and where it begins with "$bytes:", that mark
///         followed by the bytes in hexadecimal
std::string encodedSettingsText(const std::string& text);

/// The opposite of encodedSettingsText.
/// @return the bytes; @p text itself where the mark or well-formed digits are missing, as when a person typed
///         it
std::string decodedSettingsText(const std::string& text);

} // namespace vfBase
