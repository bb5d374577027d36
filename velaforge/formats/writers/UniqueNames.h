// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace vfFormats {

/// Gives each of several things a name of its own.
class UniqueNames
{
public:
    /// Returns the wanted name, with a number behind it if it is taken.
    std::string add(const std::string& wanted)
    {
        std::string name = wanted;
        for (std::size_t& number = m_next[wanted]; !m_taken.insert(name).second;)
            name = wanted + "_" + std::to_string(++number);
        return name;
    }

private:
    std::set<std::string> m_taken;
    std::map<std::string, std::size_t> m_next;
};

} // namespace vfFormats
