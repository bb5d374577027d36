// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

class VfObject;

/// The record of a class: its names, its parent, its size and how to make an object of it.
///
///     const vfBase::ClassInfo Planet::s_classInfo("solar", "Planet", "solar::Planet", &vfBase::VfObject::s_classInfo,
///                                                 nullptr, sizeof(Planet), [] { return asObject(new Planet); });
///
/// Each class that can be made by name has one static record. The constructor registers the record with
/// Registry_, the destructor unregisters it: records of a plug-in exist while its library is open. The texts
/// are not copied and must live as long as the record.
class VFBASE_EXPORT ClassInfo
{
public:
    /// A function that makes a default object, which the caller owns.
    using Creator = VfObject* (*)();

    /// Makes and registers a record.
    /// @param libraryName  namespace and library name, such as "vfApplication"
    /// @param className    short name, such as "CommandItem"
    /// @param classId      full name, such as "vfApplication::CommandItem"
    /// @param parent       record of the base class, or null for a root
    /// @param secondParent record of a second base class, or null
    /// @param size         size of an object in bytes
    /// @param creator      null if objects cannot be made by name
    ClassInfo(const char* libraryName, const char* className, const char* classId, const ClassInfo* parent,
              const ClassInfo* secondParent, int size, Creator creator);

    /// Unregisters the record.
    ~ClassInfo();

    ClassInfo(const ClassInfo&) = delete;
    ClassInfo& operator=(const ClassInfo&) = delete;

    /// Makes an object.
    /// @return the object, owned by the caller; null for a class without a creator
    VfObject* create() const;

    /// Returns the name of namespace and library.
    const char* getLibraryName() const { return m_libraryName; }

    /// Returns the short name of the class.
    const char* getClassName() const { return m_className; }

    /// Returns the full name of the class.
    const char* getClassId() const { return m_classId; }

    /// Returns the record of the base class, null for a root.
    const ClassInfo* getParent() const { return m_parent; }

    /// Returns the record of the second base class, null if there is none.
    const ClassInfo* getSecondParent() const { return m_secondParent; }

    /// Returns the size of an object in bytes.
    int getSize() const { return m_size; }

    /// Returns whether @p other is this record or that of a direct or indirect base class.
    bool isDerivedFrom(const ClassInfo* other) const;

private:
    const char* m_libraryName;
    const char* m_className;
    const char* m_classId;
    const ClassInfo* m_parent;
    const ClassInfo* m_secondParent;
    int m_size;
    Creator m_creator;
};

} // namespace vfBase
