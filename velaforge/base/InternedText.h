// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfBase {

/// Returns a copy of @p text that exists until the process ends, for functions that return a `const char*`.
/// Safe on several threads, also during static initialisation and destruction.
/// @return the same pointer for equal texts
const char* internedText(const std::string& text);

} // namespace vfBase
