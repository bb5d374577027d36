// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

namespace vfFormats {

/// Reads a file of the format "ply": meshes, strips, edges and clouds of points, in text and in both orders of bytes. A
/// file that ends too early is shown as far as it goes, with a warning.
ReadOutcome readPly(const std::string& path);

} // namespace vfFormats
