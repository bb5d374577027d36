// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ReadOutcome.h"

#include <string>
#include <vector>

namespace vfViewer {

/// Reads a model, in this process, and makes it fit to be shown: z points up, and every surface has normals.
/// @param sideFiles  that it may name; see findSideFiles()
ReadOutcome readModel(const std::string& path, const std::vector<std::string>& sideFiles);

/// The same, looking for the files that it may name.
ReadOutcome readModel(const std::string& path);

/// Reads an image onto an upright rectangle that faces the front, a unit high and as wide as its proportions ask for.
ReadOutcome readImageOnQuad(const std::string& path);

} // namespace vfViewer
