// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Counts the further holders of what copies share by pointer, so that only the last of them deletes it.
///
///     Plan::Plan(const Plan& other) : m_pages(other.m_pages) { CopyCount::add(m_pages); }
///     Plan::~Plan() { if (CopyCount::release(m_pages)) delete m_pages; }
///
/// What was never copied costs a look at a counter. Safe on several threads.
class VFBASE_EXPORT CopyCount
{
public:
    /// Counts a further holder. Null is ignored.
    static void add(const void* shared);

    /// Takes the count of one holder back. @return true for the last one
    static bool release(const void* shared) noexcept;
};

} // namespace vfBase
