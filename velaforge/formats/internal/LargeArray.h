// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

#include <sys/mman.h>

namespace vfFormats {

/// Makes room in a vector for many elements, in large pages where the system has them: a page fault for each four
/// kilobytes would cost more than filling them.
template <class Vector>
void reserveLarge(Vector& vector, std::size_t count)
{
    constexpr std::size_t largePage = std::size_t(2) * 1024 * 1024;
    vector.reserve(count);
    std::size_t room = count * sizeof(typename Vector::value_type);
    void* first = vector.data();
    if (std::align(largePage, largePage, first, room))
        madvise(first, room, MADV_HUGEPAGE);
}

} // namespace vfFormats
