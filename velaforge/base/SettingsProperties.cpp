// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsProperties.h>

#include <algorithm>
#include <map>

namespace vfBase {

namespace {

using Lists = std::map<std::string, std::vector<const SettingsProperties*>>;

Lists& lists()
{
    // Never destroyed: static lists of other libraries are destroyed later.
    static Lists& all = *new Lists;
    return all;
}

} // namespace

SettingsProperties::SettingsProperties(const char* className, std::vector<Property> properties)
    : m_className(className), m_properties(std::move(properties))
{
    lists()[m_className].push_back(this);
}

SettingsProperties::~SettingsProperties()
{
    auto& same = lists()[m_className];
    same.erase(std::remove(same.begin(), same.end(), this), same.end());
    if (same.empty())
        lists().erase(m_className);
}

const SettingsProperties* SettingsProperties::find(const SettingsObjectPrivate& object)
{
    const auto found = lists().find(std::string(object.libraryName()) + "::" + object.className());
    return found == lists().end() ? nullptr : found->second.back();
}

} // namespace vfBase
