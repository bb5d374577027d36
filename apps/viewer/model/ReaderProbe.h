// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfViewer {

enum class ProbeResult
{
    NotNeeded, ///< the format can tell a file that was cut off, or its reader survives one
    Read,
    Refused, ///< the reader came to an end without a scene
    Crashed  ///< the reader crashed, or did not come to an end in two minutes
};

/// Lets a child process read a file first, where the format cannot tell a file that was cut off and its reader crashes
/// on one.
/// @return also NotNeeded when no process could be made
ProbeResult probeReading(const std::string& path);

} // namespace vfViewer
