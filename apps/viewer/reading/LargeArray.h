// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include <sys/mman.h>

namespace vfViewer {

/// Makes room in a vector for many elements, in large pages where the system has them: a page fault for each four
/// kilobytes would cost more than filling them.
template <class Vector>
void reserveLarge(Vector& vector, std::size_t count)
{
    constexpr std::uintptr_t largePage = 2 * 1024 * 1024;
    vector.reserve(count);
    const auto begin = reinterpret_cast<std::uintptr_t>(vector.data());
    const std::uintptr_t end = begin + count * sizeof(typename Vector::value_type);
    const std::uintptr_t first = (begin + largePage - 1) / largePage * largePage;
    if (first < end && end - first >= largePage)
        madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
}

} // namespace vfViewer
