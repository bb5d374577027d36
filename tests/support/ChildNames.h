// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>

#include <string>
#include <vector>

namespace vfTest {

/// @return the names of the children, in order
inline std::vector<std::string> childNames(const vfApplication::CommandItem& parent)
{
    std::vector<std::string> names;
    for (const vfApplication::CommandItem& child : parent.getList())
        names.emplace_back(child.getCommand());
    return names;
}

} // namespace vfTest
