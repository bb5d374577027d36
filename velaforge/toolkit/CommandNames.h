// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

#include <vector>

namespace vfApplication {

/// Returns the names of all commands that Command::getCommandByName can make, sorted.
std::vector<vfBase::VfString> commandNames();

/// Returns the name among @p names with the smallest edit distance from @p name, without regard to case; of
/// several the first. A name without a namespace is compared with names without theirs.
/// @return the empty text if there are no names
vfBase::VfString nearestName(const vfBase::VfString& name, const std::vector<vfBase::VfString>& names);

} // namespace vfApplication
