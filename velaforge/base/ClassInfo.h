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
/// Each class that takes part in creation by name has one static record. Constructing it makes the
/// class known to Registry_, destroying it ends that: a plug-in's records come and go with its library.
/// The texts are not copied and must live as long as the record.
class VFBASE_EXPORT ClassInfo
{
public:
    /// Makes a default object; the caller owns it.
    using Creator = VfObject* (*)();

    /// @param libraryName  namespace and library name, as "vfApplication"
    /// @param className    short name, as "CommandItem"
    /// @param classId      full name, as "vfApplication::CommandItem"
    /// @param parent       record of the base class, or null for a root
    /// @param secondParent record of a second base class, or null
    /// @param size         size of an object in bytes
    /// @param creator      null when the class cannot be created by name
    ClassInfo(const char* libraryName, const char* className, const char* classId, const ClassInfo* parent,
              const ClassInfo* secondParent, int size, Creator creator);
    ~ClassInfo();

    ClassInfo(const ClassInfo&) = delete;
    ClassInfo& operator=(const ClassInfo&) = delete;

    /// @return a new object, owned by the caller; null for a class without a creator
    VfObject* create() const;

    const char* getLibraryName() const { return m_libraryName; }
    const char* getClassName() const { return m_className; }
    const char* getClassId() const { return m_classId; }

    /// @return the record of the base class, null for a root
    const ClassInfo* getParent() const { return m_parent; }
    const ClassInfo* getSecondParent() const { return m_secondParent; }

    /// @return size of an object in bytes
    int getSize() const { return m_size; }

    /// @return true for this record itself and for each record above it
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
