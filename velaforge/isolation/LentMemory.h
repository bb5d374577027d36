// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vfIsolation {

class HelperProcess;

/// The memory of a process that has done its task and waits while this object lives: for results so large that to write them
/// to a file in memory would cost as much as to make them. What comes from it may be anything: validate it.
class VFISOLATION_EXPORT LentMemory
{
public:
    /// @param process  that lends it, which waits as long; made by runIsolated()
    explicit LentMemory(std::shared_ptr<const HelperProcess> process);
    ~LentMemory();

    LentMemory(const LentMemory&) = delete;
    LentMemory& operator=(const LentMemory&) = delete;

    /// Returns the size of the address space that the process has in use, in bytes; 0 if it is gone.
    std::uint64_t size() const;

    /// Copies bytes. May be called on several threads at once.
    /// @param address  in the process
    /// @param to       where they are put
    /// @param size     their number
    /// @return false if the process has not got them all, or is gone; @p to is undefined then
    bool copy(std::uint64_t address, void* to, std::size_t size) const;

private:
    const std::shared_ptr<const HelperProcess> m_process;
};

} // namespace vfIsolation
