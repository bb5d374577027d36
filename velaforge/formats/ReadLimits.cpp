// SPDX-License-Identifier: MIT
#include <velaforge/formats/ReadLimits.h>

#include <algorithm>

#include <unistd.h>

namespace vfFormats {

namespace {

constexpr unsigned int shortestWork = 30; // seconds
constexpr std::uint64_t bytesPerSecond = std::uint64_t(512) * 1024;
constexpr unsigned int clockFactor = 10;
constexpr std::uint64_t usualMemory = std::uint64_t(2) * 1024 * 1024 * 1024;
constexpr std::uint64_t memoryFactor = 100;

std::uint64_t memoryAllowed(std::uint64_t size)
{
    const long pages = sysconf(_SC_AVPHYS_PAGES);
    const long all = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    // The system drops cached files when memory is needed, so at least half of all memory counts as available.
    const auto available =
        static_cast<std::uint64_t>(std::max(pages, all / 2)) * static_cast<std::uint64_t>(pageSize);
    const std::uint64_t most = available / 4 * 3;
    return size > most / memoryFactor ? most : std::min(most, usualMemory + memoryFactor * size);
}

} // namespace

vfIsolation::Limits ReadLimits::forSize(std::uint64_t bytes) const
{
    vfIsolation::Limits limits;
    limits.memory = memory != 0 ? memory : memoryAllowed(bytes);
    limits.resultSize = limits.memory;
    limits.seconds = seconds;
    if (seconds == 0)
        limits.seconds = shortestWork +
                         static_cast<unsigned int>(std::min<std::uint64_t>(bytes / bytesPerSecond, 1000000));
    limits.clockSeconds = clockSeconds != 0 ? clockSeconds : clockFactor * limits.seconds;
    return limits;
}

} // namespace vfFormats
