// SPDX-License-Identifier: MIT
#include "headless/LargePages.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace vfViewer {

void useLargePages()
{
#ifdef __GLIBC__
    constexpr int room = 256 * 1024 * 1024;   // of addresses; memory is taken as it is used
    constexpr int largest = 32 * 1024 * 1024; // an image of four times the pixels of a common screen
    constexpr std::uintptr_t page = std::uintptr_t(2) * 1024 * 1024;
    if (mallopt(M_MMAP_THRESHOLD, largest) == 0 || mallopt(M_TRIM_THRESHOLD, INT_MAX) == 0 ||
        mallopt(M_TOP_PAD, room) == 0)
        return;
    // The heap grows now, and by little from then on.
    void* const before = sbrk(0);
    void* volatile forced = std::malloc(static_cast<std::size_t>(largest) / 2);
    std::free(forced);
    mallopt(M_TOP_PAD, largest / 4);
    const auto begin = (reinterpret_cast<std::uintptr_t>(before) + page - 1) / page * page;
    const auto end = reinterpret_cast<std::uintptr_t>(sbrk(0)) / page * page;
    if (begin < end)
        madvise(reinterpret_cast<void*>(begin), end - begin,
                MADV_HUGEPAGE); // NOLINT(performance-no-int-to-ptr)
#endif
}

} // namespace vfViewer
