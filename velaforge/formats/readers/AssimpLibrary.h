// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace vfFormats {

/// Loads it, which readWithAssimpLibrary() does otherwise.
void loadAssimp();

/// Reads a model with it. It is large, and therefore loaded only here.
ReadOutcome readWithAssimpLibrary(const std::string& path);

} // namespace vfFormats
