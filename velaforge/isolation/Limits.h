// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vfIsolation {

/// What an isolated process may use. The process is ended when it exceeds a limit of time; beyond the others its calls fail.
struct Limits
{
    std::uint64_t memory = std::uint64_t(2) << 30; ///< bytes of address space; not limited under a sanitizer
    unsigned int seconds = 30;                     ///< of processor time
    unsigned int clockSeconds = 300;               ///< of the clock, in which the process may wait for a disk
    std::uint64_t resultSize = std::uint64_t(4)
                               << 30; ///< bytes of a file that it writes, the result included
    unsigned int files = 256;         ///< open at once
};

} // namespace vfIsolation
