// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Counts the copies that share an object by pointer, so that only the last of them deletes it.
///
///     Plan::Plan(const Plan& other) : m_pages(other.m_pages) { CopyCount::add(m_pages); }
///     Plan::~Plan() { if (CopyCount::release(m_pages)) delete m_pages; }
///
/// For an object that was never shared, each call only reads a counter. Safe on several threads.
class VFBASE_EXPORT CopyCount
{
public:
    /// Adds a holder of @p shared. Does nothing for null.
    static void add(const void* shared);

    /// Removes a holder of @p shared.
    /// @return true if it was the last one, which deletes the object
    static bool release(const void* shared) noexcept;
};

} // namespace vfBase
