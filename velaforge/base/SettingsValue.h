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

    /// No value.
    SettingsValue() = default;

    // A value of each kind. Implicit, so that getters' results can be given where a value is expected.
    SettingsValue(bool value) : m_value(value) {}
    SettingsValue(int value) : m_value(static_cast<std::int64_t>(value)) {}
    SettingsValue(unsigned int value) : m_value(static_cast<std::int64_t>(value)) {}
    SettingsValue(std::int64_t value) : m_value(value) {}
    SettingsValue(double value) : m_value(value) {}

    /// A text; @p value must not be null.
    SettingsValue(const char* value) : m_value(std::string(value)) {}
    SettingsValue(std::string value) : m_value(std::move(value)) {}
    SettingsValue(const VfString& value) : m_value(value.str()) {}

    /// A list of texts.
    SettingsValue(const StringList& value);
    SettingsValue(List value) : m_value(std::move(value)) {}
    SettingsValue(Map value) : m_value(std::move(value)) {}

    /// Reads a truth value.
    bool read(bool& target) const;

    /// Reads a whole number; false for one that does not fit into the target.
    bool read(int& target) const;
    bool read(unsigned int& target) const;
    bool read(std::int64_t& target) const;

    /// Reads a real or whole number, or a text that stands for a number that is not finite: "Infinity",
    /// "-Infinity", "NaN".
    bool read(double& target) const;

    /// Reads the same kinds; false for a finite number beyond the range of float.
    bool read(float& target) const;

    /// Reads a text.
    bool read(std::string& target) const;
    bool read(VfString& target) const;

    /// Reads a list of texts. Replaces the entries of the list, which other handles may share.
    bool read(StringList& target) const;

    /// @return the list, null for a value of another kind; valid while this object lives and does not change
    const List* list() const { return std::get_if<List>(&m_value); }

    /// @return the map, null for a value of another kind; valid while this object lives and does not change
    const Map* map() const { return std::get_if<Map>(&m_value); }

    using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string, List, Map>;

    /// @return the value itself, for a visitor
    const Variant& variant() const { return m_value; }

private:
    Variant m_value;
};

} // namespace vfBase
