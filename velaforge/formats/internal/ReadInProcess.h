// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <velaforge/formats/ReadJob.h>

namespace vfFormats {

/// Reads a file in a process of its own and waits for it: what the thread of a ReadJob does. Never throws.
VFFORMATS_EXPORT ReadOutcome readInProcess(vfIsolation::JobControl& control, ReadKind kind,
                                           const std::string& path, const ReadLimits& limits = {});

} // namespace vfFormats
