// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <cstdint>

namespace vfBase {

class ClassInfo;

/// Root of the class tree: an object that knows its class record and has an identity.
///
/// It holds no data of its own. A copy is a new object with an identity of its own.
class VFBASE_EXPORT VfObject
{
public:
    /// The class record of VfObject, parent of every other record that is not a handle's.
    static const ClassInfo s_classInfo;

    VfObject() = default;

    /// A new object: nothing is copied.
    VfObject(const VfObject&) {}

    /// Copies nothing; the object keeps its identity.
    VfObject& operator=(const VfObject&) { return *this; }

    /// @return the record of the most derived class that has one; never null, not owned by the caller
    virtual const ClassInfo* getClassInfo() const;

    virtual ~VfObject() = default;

    /// @return a number that no other living object has; a new object may get the number of one that was
    ///         destroyed
    virtual std::uint64_t getUniqueId() const;

    /// @return "vfBase::VfObject"
    static const char* classId();
};

} // namespace vfBase
