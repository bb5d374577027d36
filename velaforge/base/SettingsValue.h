// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>
#include <velaforge/base/VfString.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vfBase {

/// One value as a settings file holds it: nothing, a truth value, a number, a text, a list or a map.
///
///     vfBase::SettingsValue value(3);
///     int width = 1;
///     value.read(width);  // true, and width is 3
///
/// Reading a value of another kind, or a number out of range, gives false and leaves the target as it was.
class VFBASE_EXPORT SettingsValue
{
public:
    using List = std::vector<SettingsValue>;
    using Map = std::map<std::string, SettingsValue>;

    SettingsValue() = default;
    SettingsValue(bool value) : m_value(value) {}
    SettingsValue(int value) : m_value(static_cast<std::int64_t>(value)) {}
    SettingsValue(unsigned int value) : m_value(static_cast<std::int64_t>(value)) {}
    SettingsValue(std::int64_t value) : m_value(value) {}
    SettingsValue(double value) : m_value(value) {}
    SettingsValue(const char* value) : m_value(std::string(value)) {}
    SettingsValue(std::string value) : m_value(std::move(value)) {}
    SettingsValue(const VfString& value) : m_value(value.str()) {}
    SettingsValue(const StringList& value);
    SettingsValue(List value) : m_value(std::move(value)) {}
    SettingsValue(Map value) : m_value(std::move(value)) {}

    bool read(bool& target) const;
    bool read(int& target) const;
    bool read(unsigned int& target) const;
    bool read(std::int64_t& target) const;

    /// Takes whole numbers too, and the texts that stand for numbers that are not finite.
    bool read(double& target) const;
    bool read(float& target) const;
    bool read(std::string& target) const;
    bool read(VfString& target) const;

    /// Replaces the entries of the list that @p target shares.
    bool read(StringList& target) const;

    /// @return the list or map, null for a value of another kind
    const List* list() const { return std::get_if<List>(&m_value); }
    const Map* map() const { return std::get_if<Map>(&m_value); }

    using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string, List, Map>;
    const Variant& variant() const { return m_value; }

private:
    Variant m_value;
};

} // namespace vfBase
