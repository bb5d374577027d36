// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Returns the version of this family of libraries, such as "1.2.3". The pointer is valid until the process
/// ends.
VFBASE_EXPORT const char* getVersion();

/// Turns verbose diagnostics on or off: with @p verbose true, osg::notify passes messages up to osg::INFO;
/// with false, up to the former level.
VFBASE_EXPORT void setVerbose(bool verbose);

/// Returns whether verbose diagnostics are on.
VFBASE_EXPORT bool isVerbose();

} // namespace vfBase
