// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <vector>

namespace vfApplication {

/// @return the names of all commands that Command::getCommandByName can make, in order
std::vector<vfBase::VfString> commandNames();

/// @return the name out of @p names that takes the fewest changes to get to from @p name, upper and lower case counting
///         as equal; of several the first. A name without its namespace is compared with such. Empty without names.
vfBase::VfString nearestName(const vfBase::VfString& name, const std::vector<vfBase::VfString>& names);

} // namespace vfApplication
