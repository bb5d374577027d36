// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfBase {

/// Keeps one copy of each text until the process ends, for functions that return a `const char*` which must
/// stay valid. Safe on several threads, also during static initialisation and destruction.
/// @return that copy, the same pointer for equal texts
const char* internedText(const std::string& text);

} // namespace vfBase
