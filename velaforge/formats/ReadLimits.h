// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <velaforge/isolation/Limits.h>

#include <cstdint>

namespace vfFormats {

/// What a process that reads or writes a file may use up.
struct VFFORMATS_EXPORT ReadLimits
{
    /// In bytes of memory; 0 for two gigabytes and a hundred times the size of the file, but no more than three quarters
    /// of what the machine has left.
    std::uint64_t memory = 0;

    /// In seconds of working time; 0 for half a minute and two seconds for each megabyte of the file.
    unsigned int seconds = 0;

    /// In seconds of the clock, in which the process may also wait for a disk; 0 for ten times the working time.
    unsigned int clockSeconds = 0;

    /// Returns the limits for a file of that size in bytes.
    vfIsolation::Limits forSize(std::uint64_t bytes) const;
};

} // namespace vfFormats
