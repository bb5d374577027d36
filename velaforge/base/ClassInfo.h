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
/// Each class that takes part in creation by name has one static record. The constructor registers the class
/// with Registry_, the destructor removes it again, so a plug-in's classes are known while its library is
/// loaded. The texts are not copied and must live as long as the record.
class VFBASE_EXPORT ClassInfo
{
public:
    /// Makes a default object; the caller owns it.
    using Creator = VfObject* (*)();

    /// Registers the class with Registry_.
    /// @param libraryName  namespace and library name, as "vfApplication"
    /// @param className    short name, as "CommandItem"
    /// @param classId      full name, as "vfApplication::CommandItem"
    /// @param parent       record of the base class, or null for a root
    /// @param secondParent record of a second base class, or null
    /// @param size         size of an object in bytes
    /// @param creator      null when the class cannot be created by name
    ClassInfo(const char* libraryName, const char* className, const char* classId, const ClassInfo* parent,
              const ClassInfo* secondParent, int size, Creator creator);

    /// Removes the class from Registry_.
    ~ClassInfo();

    ClassInfo(const ClassInfo&) = delete;
    ClassInfo& operator=(const ClassInfo&) = delete;

    /// @return a new object, owned by the caller; null for a class without a creator
    VfObject* create() const;

    /// @return the namespace and library name, as "vfApplication"
    const char* getLibraryName() const { return m_libraryName; }

    /// @return the short name, as "CommandItem"
    const char* getClassName() const { return m_className; }

    /// @return the full name, as "vfApplication::CommandItem"
    const char* getClassId() const { return m_classId; }

    /// @return the record of the base class, null for a root
    const ClassInfo* getParent() const { return m_parent; }

    /// @return the record of the second base class, null where there is none
    const ClassInfo* getSecondParent() const { return m_secondParent; }

    /// @return size of an object in bytes
    int getSize() const { return m_size; }

    /// @return true when @p other is this record or that of a direct or indirect base class; false for null
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
