// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace vfFormats {

/// Reads a file of the format "obj", with the materials and images that it names. Each part is a node of its name, and z
/// points up. Normals are as in the file: none where it has none.
///
/// A reader of our own, since large files are common in this format and OpenSceneGraph's takes its time.
ReadOutcome readObj(const std::string& path);

} // namespace vfFormats
