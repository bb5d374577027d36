// SPDX-License-Identifier: MIT
// Ten thousand records for a settings store: a hundred groups of a hundred values of four kinds.
#pragma once

#include <string>
#include <vector>

namespace records {

constexpr int groupCount = 100;
constexpr int valueCount = 100;

struct Group
{
    std::string name;
    std::vector<std::string> texts;
    std::vector<int> numbers;
    std::vector<double> sizes;
    std::vector<bool> flags;
};

inline std::string valueName(int index)
{
    return "value" + std::to_string(index);
}

/// Which of the four kinds a value has, and where it stands among those of its kind.
inline int kindOf(int index)
{
    return index % 4;
}
inline std::size_t placeOf(int index)
{
    return static_cast<std::size_t>(index / 4);
}

/// @param isFilled  with values of their own; otherwise all empty or zero
inline Group makeGroup(int number, bool isFilled)
{
    Group group;
    group.name = "Group" + std::to_string(number);
    for (int i = 0; i < valueCount / 4; ++i) {
        group.texts.push_back(isFilled ? "/models/part " + std::to_string(number * 1000 + i) + ".obj" : "");
        group.numbers.push_back(isFilled ? number * i + 1 : 0);
        group.sizes.push_back(isFilled ? number + 0.125 * i + 0.1 : 0.0);
        group.flags.push_back(isFilled);
    }
    return group;
}

/// @return whether the group holds what makeGroup filled in
inline bool isWhole(int number, const Group& group)
{
    const Group expected = makeGroup(number, true);
    return group.texts == expected.texts && group.numbers == expected.numbers &&
           group.sizes == expected.sizes && group.flags == expected.flags;
}

} // namespace records
