// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>

namespace vfTest {

/// @return the place of a virtual operation in the table that its object's first pointer refers to, counted from 0;
///         a virtual destructor takes two places. -1 for an operation that is not virtual.
///
/// Reads the member pointer as the C++ ABI of this platform lays it out: one more than the offset in the table.
template <class Member>
int slotOf(Member member)
{
    static_assert(sizeof(Member) == 2 * sizeof(std::ptrdiff_t), "a pointer to a member function");
    std::ptrdiff_t words[2];
    std::memcpy(words, &member, sizeof(words));
    if (!(words[0] & 1))
        return -1;
    return static_cast<int>((words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

} // namespace vfTest
