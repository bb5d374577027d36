// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <cstdint>

namespace vfBase {

class ClassInfo;

/// The root of the class tree: an object with a class record and an identity.
///
/// The class has no fields. A copy is a new object with its own identity.
class VFBASE_EXPORT VfObject
{
public:
    /// The class record of VfObject, parent of every other record that is not a handle's.
    static const ClassInfo s_classInfo;

    /// Makes an object.
    VfObject() = default;

    /// Makes a new object: copies nothing.
    VfObject(const VfObject&) {}

    /// Changes nothing.
    VfObject& operator=(const VfObject&) { return *this; }

    /// Returns the record of the most derived class that has one; never null.
    virtual const ClassInfo* getClassInfo() const;

    virtual ~VfObject() = default;

    /// Returns the identity: a number that no other existing object has. A new object may get the number of a
    /// destroyed one.
    virtual std::uint64_t getUniqueId() const;

    /// Returns "vfBase::VfObject".
    static const char* classId();
};

} // namespace vfBase
