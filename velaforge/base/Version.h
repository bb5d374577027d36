// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// @return the version of this family of libraries, as "1.2.3"; valid until the process ends
VFBASE_EXPORT const char* getVersion();

/// Turns verbose diagnostics on, so that osg::notify passes messages up to osg::INFO, or back to the former
/// level.
VFBASE_EXPORT void setVerbose(bool verbose);

/// @return true between setVerbose(true) and setVerbose(false)
VFBASE_EXPORT bool isVerbose();

} // namespace vfBase
