// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/Referenced>

namespace vfBase {

/// Holds a reference on @p body until the process ends, for what is never released by contract: it stays
/// reachable, so that a leak checker can tell it from a mistake. Null is ignored. Safe on several threads.
VFBASE_EXPORT void keepForProcess(const osg::Referenced* body);

} // namespace vfBase
