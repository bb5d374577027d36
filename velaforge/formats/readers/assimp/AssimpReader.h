// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace vfFormats {

/// Reads a model with Assimp, with its materials, images and animations.
ReadOutcome readWithAssimp(const std::string& path);

} // namespace vfFormats
