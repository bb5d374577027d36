// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vfIsolation {

/// Closes a descriptor and sets it to -1; does nothing for a negative one.
void closeFile(int& file);

/// Makes two connected sockets for packets, which programs that are started do not inherit. @return false on failure
bool makeSocketPair(int& ours, int& theirs);

/// Writes all bytes. @return false on failure; part of them may be written
bool writeAll(int file, const void* bytes, std::size_t size);

} // namespace vfIsolation
