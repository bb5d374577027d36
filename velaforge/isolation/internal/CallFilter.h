// SPDX-License-Identifier: MIT
#pragma once

namespace vfIsolation {

/// Has the kernel refuse the system calls that a process without files, sockets and children does not need.
///
/// Calls have three tiers. Allowed calls pass, some by their arguments. Known calls that are not allowed fail with EPERM, or
/// with the error by which libraries do without them; those that only an attack makes end the process. Unknown calls fail
/// with ENOSYS, so that a newer C library falls back to older ones.
/// @return false if the kernel has no such filters
bool restrictCalls();

} // namespace vfIsolation
