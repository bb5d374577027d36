// SPDX-License-Identifier: MIT
#include <velaforge/toolkit/Tell.h>

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/Printable.h>

#include <iostream>

namespace vfApplication {

bool tell(const vfBase::VfString& subject, const vfBase::VfString& reason)
{
    std::cerr << vfBase::ApplicationInfo::instance().getApplicationName() << ": "
              << vfBase::printable(subject) << ": " << vfBase::printable(reason) << std::endl;
    return false;
}

} // namespace vfApplication
