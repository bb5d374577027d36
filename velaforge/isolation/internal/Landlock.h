// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfIsolation {

/// Has the kernel refuse all use of files by path but for reading the given ones, TCP, and abstract sockets and signals
/// outwards, as far as its Landlock knows them. Needs PR_SET_NO_NEW_PRIVS.
/// @return the version of the interface that is in force; 0 if there is none
int restrictFiles(const std::vector<std::string>& readableFiles);

} // namespace vfIsolation
