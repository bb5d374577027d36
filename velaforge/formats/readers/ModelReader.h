// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>
#include <vector>

namespace vfFormats {

/// Reads a model, in this process, and makes it fit to be shown: z points up, and every surface has normals.
/// @param sideFiles  that it may name; see findSideFiles()
ReadOutcome parseModel(const std::string& path, const std::vector<std::string>& sideFiles);

/// The same, looking for the files that it may name.
ReadOutcome parseModel(const std::string& path);

/// Reads an image onto an upright rectangle that faces the front, a unit high and as wide as its proportions ask for.
ReadOutcome readImageOnQuad(const std::string& path);

} // namespace vfFormats
