// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfViewer {

/// Lets a child process read a file first, where the format cannot tell a file that was cut off and its reader crashes
/// on one.
/// @return false when the reader crashed or did not come to an end there; true when it may be called here, whatever
///         comes of it, and for all formats that are not probed
bool survivesReading(const std::string& path);

} // namespace vfViewer
