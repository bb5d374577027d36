// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/isolation/Limits.h>

#include <cstdint>

namespace vfFormats {

/// Limits of a process that reads or writes a file.
struct VFFORMATS_EXPORT ReadLimits
{
    /// Memory in bytes; 0 for two gigabytes and a hundred times the size of the file, but at most three quarters of the
    /// memory that is available.
    std::uint64_t memory = 0;
    /// Processor time in seconds; 0 for half a minute and two seconds for each megabyte of the file.
    unsigned int seconds = 0;
    /// Time on the clock in seconds, in which the process may also wait for a disk; 0 for ten times the processor time.
    unsigned int clockSeconds = 0;

    /// Returns the limits for a file.
    /// @param bytes  the size of the file
    vfIsolation::Limits forSize(std::uint64_t bytes) const;
};

} // namespace vfFormats
