// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vfIsolation {

/// Bytes that another process has sent: a read-only mapping of a sealed file in memory. Copies share the mapping, which lives
/// as long as the last of them.
///
/// The other process cannot change them any more, and may have written anything: validate them.
class VFISOLATION_EXPORT SharedBytes
{
public:
    /// No bytes.
    SharedBytes() = default;

    /// Maps the first @p size bytes of a file in memory. There are no bytes if that fails, if the file is shorter, or if size
    /// and contents are not sealed.
    /// @param file  stays the caller's, who may close it
    /// @param size  of what is mapped
    SharedBytes(int file, std::uint64_t size);

    /// Returns the first byte; null if there are none.
    const unsigned char* data() const { return m_bytes.get(); }
    /// Returns the number of bytes.
    std::size_t size() const { return m_size; }

    /// Returns whether there are none.
    bool isEmpty() const { return m_size == 0; }

private:
    std::shared_ptr<const unsigned char> m_bytes;
    std::size_t m_size = 0;
};

} // namespace vfIsolation
