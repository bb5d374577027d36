// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ReadOutcome.h"

#include <string>

namespace vfViewer {

/// Reads a model with Assimp, with its materials, images and animations.
ReadOutcome readWithAssimp(const std::string& path);

} // namespace vfViewer
