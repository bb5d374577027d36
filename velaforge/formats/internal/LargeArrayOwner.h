// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace vfFormats {

/// Gives access to the arrays that are not among the bytes of a transfer.
struct LargeArrayOwner
{
    std::uint64_t size = 0; ///< the sum of the sizes of these arrays; 0 when there are none

    /// Copies from an address there; called on several threads. @return false when nothing is there
    std::function<bool(std::uint64_t address, void* to, std::size_t size)> copy;
};

} // namespace vfFormats
