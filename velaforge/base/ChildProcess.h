// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <functional>

namespace vfBase {

enum class ChildResult
{
    NotMade,   ///< the system gave no further process
    Succeeded, ///< the work returned true
    Failed,    ///< the work returned false, or threw
    Died       ///< the process crashed, ended itself, or was not done in time
};

/// Does some work in a copy of this process and waits for it: what may crash or hang is tried there first.
///
///     if (vfBase::tryInChild([&] { return reader.read(path); }, 60) == vfBase::ChildResult::Succeeded)
///         ...
///
/// Nothing that the work does to memory is seen here. It has no streams to read from or to write to, and a crash in it
/// leaves no core file. Where other threads run, the work must keep off what they may have locked.
/// @param seconds  the time allowed, at least 1
VFBASE_EXPORT ChildResult tryInChild(const std::function<bool()>& work, unsigned int seconds);

} // namespace vfBase
