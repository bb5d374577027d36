// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vfTest {

/// Code that takes untrusted bytes.
struct FuzzTarget
{
    const char* name;
    void (*run)(const std::uint8_t* bytes, std::size_t size); ///< ends the process on a fault
    std::vector<std::string> (*seeds)();                      ///< what it should take
    /// Changes some bytes in its own way, in place. @return the new size; 0 when it has no way for these
    std::size_t (*mutate)(std::uint8_t* bytes, std::size_t size, unsigned int seed);
};

const std::vector<FuzzTarget>& fuzzTargets();

/// @return null for a name that none of them has
const FuzzTarget* fuzzTarget(const std::string& name);

} // namespace vfTest
