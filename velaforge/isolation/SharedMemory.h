// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

namespace vfIsolation {

/// Makes an empty file in memory that another process can be given and that can be sealed.
/// @return its descriptor, which programs that are started do not inherit; negative on failure
VFISOLATION_EXPORT int makeSharedMemory(const char* name);

/// Seals the size of a file in memory. A process that maps it would crash if another one truncated it.
/// @return false on failure
VFISOLATION_EXPORT bool sealSize(int file);

/// Fixes the size and the contents of a file in memory. Nothing may have it mapped for writing.
/// @return false on failure
VFISOLATION_EXPORT bool sealContents(int file);

/// Returns whether the size and the contents of a file in memory are fixed for good. Ask before mapping what another process
/// wrote.
VFISOLATION_EXPORT bool isSealed(int file);

} // namespace vfIsolation
