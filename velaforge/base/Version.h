// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// @return version of the whole family of libraries, as "1.2.3"; valid for the whole process
VFBASE_EXPORT const char* getVersion();

/// Turns verbose diagnostics on or off: osg::notify then passes messages up to osg::INFO,
/// or falls back to the level that stood before.
VFBASE_EXPORT void setVerbose(bool verbose);

/// @return true between setVerbose(true) and setVerbose(false)
VFBASE_EXPORT bool isVerbose();

} // namespace vfBase
