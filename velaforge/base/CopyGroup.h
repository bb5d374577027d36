// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Remembers which objects share a body by plain copies, where by contract the first destructor of them deletes the body.
/// A further destructor then does not delete it again.
///
///     Plan::Plan() : m_pages(new Pages) { CopyGroup::leave(this); }
///     Plan::Plan(const Plan& other) : m_pages(other.m_pages) { CopyGroup::join(this, &other); }
///     Plan::~Plan() { if (CopyGroup::end(this)) delete m_pages; }
///
/// An object that was never copied costs a look at a flag. Safe on several threads.
class VFBASE_EXPORT CopyGroup
{
public:
    /// Enters @p copy into the group of @p source, which is made if needed. The copy leaves its former group.
    static void join(const void* copy, const void* source);

    /// Takes an object out of its group: it has a body of its own from now on.
    static void leave(const void* object) noexcept;

    /// Takes an object out of its group because it is destroyed.
    /// @return true when the object deletes its body; false when another one of its group has done so
    static bool end(const void* object) noexcept;
};

} // namespace vfBase
