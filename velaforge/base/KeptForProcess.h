// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/Referenced>

namespace vfBase {

/// Holds a reference on @p body until the process ends, for what is never released by contract: it stays
/// reachable, so that a leak checker can tell it from a mistake. Null is ignored. Safe on several threads.
VFBASE_EXPORT void keepForProcess(const osg::Referenced* body);

/// The same for what has no count and is never deleted: keeps it reachable. Null is ignored. Safe on several threads.
VFBASE_EXPORT void keepReachable(const void* object);

} // namespace vfBase
