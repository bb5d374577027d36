// SPDX-License-Identifier: MIT
#include <velaforge/isolation/SharedBytes.h>

#include <velaforge/isolation/SharedMemory.h>

#include <limits>

#include <sys/mman.h>
#include <sys/stat.h>

namespace vfIsolation {

SharedBytes::SharedBytes(int file, std::uint64_t size)
{
    struct stat status;
    if (size == 0 || size > std::numeric_limits<std::size_t>::max() / 2 || !isSealed(file) ||
        fstat(file, &status) != 0 || static_cast<std::uint64_t>(status.st_size) < size)
        return;
    const auto length = static_cast<std::size_t>(size);
    // Private, since older kernels refuse a shared mapping of a file that is sealed against writing.
    void* bytes = mmap(nullptr, length, PROT_READ, MAP_PRIVATE, file, 0);
    if (bytes == MAP_FAILED)
        return;
    m_bytes.reset(static_cast<const unsigned char*>(bytes), [length](const unsigned char* mapped) {
        munmap(const_cast<unsigned char*>(mapped), length);
    });
    m_size = length;
}

} // namespace vfIsolation
