// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <osg/Referenced>

namespace vfBase {

/// Leaks @p body on purpose: holds a reference on it until the process ends. The body stays reachable, so
/// that a leak checker does not report it. Does nothing for null. Safe on several threads.
VFBASE_EXPORT void leakForProcess(const osg::Referenced* body);

/// Leaks @p object, which has no reference count, on purpose: keeps a pointer to it until the process ends
/// and never deletes it. A leak checker does not report it. Does nothing for null. Safe on several threads.
VFBASE_EXPORT void leakForProcess(const void* object);

} // namespace vfBase
