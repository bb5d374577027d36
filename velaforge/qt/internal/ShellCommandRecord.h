// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>

namespace vfApplication {

/// The class record by which a command of the shell is made by name.
template <class Command>
struct ShellCommandRecord : vfBase::ClassInfo
{
    ShellCommandRecord(const char* className, const char* classId)
        : ClassInfo("vfApplicationQt", className, classId, &CommandPrivate::s_classInfo, nullptr,
                    static_cast<int>(sizeof(Command)), []() -> vfBase::VfObject* { return new Command; })
    {}
};

} // namespace vfApplication
