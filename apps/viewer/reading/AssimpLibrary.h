// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ReadOutcome.h"

#include <string>

namespace vfViewer {

/// @return whether the library is installed that reads the formats of ReadBy::Assimp
bool hasAssimp();

/// Loads it, which readWithAssimpLibrary() does otherwise.
void loadAssimp();

/// Reads a model with it. It is large, and therefore loaded only here.
ReadOutcome readWithAssimpLibrary(const std::string& path);

} // namespace vfViewer
