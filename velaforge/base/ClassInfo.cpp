// SPDX-License-Identifier: MIT
#include <velaforge/base/ClassInfo.h>

#include <velaforge/base/Registry_.h>

namespace vfBase {

ClassInfo::ClassInfo(const char* libraryName, const char* className, const char* classId,
                     const ClassInfo* parent, const ClassInfo* secondParent, int size, Creator creator)
    : m_libraryName(libraryName),
      m_className(className),
      m_classId(classId),
      m_parent(parent),
      m_secondParent(secondParent),
      m_size(size),
      m_creator(creator)
{
    Registry_::instance().add(this);
}

ClassInfo::~ClassInfo()
{
    Registry_::instance().remove(this);
}

VfObject* ClassInfo::create() const
{
    return m_creator ? m_creator() : nullptr;
}

bool ClassInfo::isDerivedFrom(const ClassInfo* other) const
{
    if (!other)
        return false;
    if (other == this)
        return true;
    return (m_parent && m_parent->isDerivedFrom(other)) ||
           (m_secondParent && m_secondParent->isDerivedFrom(other));
}

} // namespace vfBase
