// SPDX-License-Identifier: MIT
#include <velaforge/base/VfObject.h>

#include <velaforge/base/ClassInfo.h>

namespace vfBase {

const ClassInfo VfObject::s_classInfo("vfBase", "VfObject", VfObject::classId(), nullptr, nullptr,
                                      static_cast<int>(sizeof(VfObject)), nullptr);

const ClassInfo* VfObject::getClassInfo() const
{
    return &s_classInfo;
}

std::uint64_t VfObject::getUniqueId() const
{
    return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(this));
}

const char* VfObject::classId()
{
    return "vfBase::VfObject";
}

} // namespace vfBase
