// SPDX-License-Identifier: MIT
#include "headless/LargePages.h"

#include <climits>
#include <cstddef>
#include <cstdlib>
#include <memory>

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
    constexpr std::size_t page = std::size_t(2) * 1024 * 1024;
    if (mallopt(M_MMAP_THRESHOLD, largest) == 0 || mallopt(M_TRIM_THRESHOLD, INT_MAX) == 0 ||
        mallopt(M_TOP_PAD, room) == 0)
        return;
    // The heap grows now, and by little from then on.
    void* begin = sbrk(0);
    void* volatile forced = std::malloc(static_cast<std::size_t>(largest) / 2);
    std::free(forced);
    mallopt(M_TOP_PAD, largest / 4);
    auto grown = static_cast<std::size_t>(static_cast<char*>(sbrk(0)) - static_cast<char*>(begin));
    if (std::align(page, page, begin, grown))
        madvise(begin, grown, MADV_HUGEPAGE);
#endif
}

} // namespace vfViewer
