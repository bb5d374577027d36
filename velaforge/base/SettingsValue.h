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

/// A value of a settings file: none, a truth value, a number, a text, a list or a map.
///
///     vfBase::SettingsValue value(3);
///     int width = 1;
///     value.read(width);  // true, and width is 3
///
/// Reading a value of another kind, or a number out of range, returns false and leaves the target unchanged.
class VFBASE_EXPORT SettingsValue
{
public:
    /// A list of values.
    using List = std::vector<SettingsValue>;

    /// Values by key.
    using Map = std::map<std::string, SettingsValue>;

    /// Makes no value.
    SettingsValue() = default;

    /// Makes a truth value.
    SettingsValue(bool value) : m_value(value) {}

    /// Makes a whole number.
    SettingsValue(int value) : m_value(static_cast<std::int64_t>(value)) {}

    /// Makes a whole number.
    SettingsValue(unsigned int value) : m_value(static_cast<std::int64_t>(value)) {}

    /// Makes a whole number.
    SettingsValue(std::int64_t value) : m_value(value) {}

    /// Makes a number.
    SettingsValue(double value) : m_value(value) {}

    /// Makes a text. @p value must not be null.
    SettingsValue(const char* value) : m_value(std::string(value)) {}

    /// Makes a text.
    SettingsValue(std::string value) : m_value(std::move(value)) {}

    /// Makes a text.
    SettingsValue(const VfString& value) : m_value(value.str()) {}

    /// Makes a list of texts.
    SettingsValue(const StringList& value);

    /// Makes a list.
    SettingsValue(List value) : m_value(std::move(value)) {}

    /// Makes a map.
    SettingsValue(Map value) : m_value(std::move(value)) {}

    /// Reads a truth value.
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(bool& target) const;

    /// Reads a whole number.
    /// @return false, with @p target unchanged, for a value of another kind or out of range
    bool read(int& target) const;

    /// Reads a whole number.
    /// @return false, with @p target unchanged, for a value of another kind or out of range
    bool read(unsigned int& target) const;

    /// Reads a whole number.
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(std::int64_t& target) const;

    /// Reads a number: also a whole number, and the texts "Infinity", "-Infinity" and "NaN".
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(double& target) const;

    /// Reads a number, as for double.
    /// @return false, with @p target unchanged, for a value of another kind or out of range
    bool read(float& target) const;

    /// Reads a text.
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(std::string& target) const;

    /// Reads a text.
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(VfString& target) const;

    /// Reads a list of texts into the list that @p target shares.
    /// @return false, with @p target unchanged, for a value of another kind
    bool read(StringList& target) const;

    /// Returns the list, null for a value of another kind. Valid until this object changes or is destroyed.
    const List* list() const { return std::get_if<List>(&m_value); }

    /// Returns the map, null for a value of another kind. Valid until this object changes or is destroyed.
    const Map* map() const { return std::get_if<Map>(&m_value); }

    /// The types that a value can have; std::monostate for no value.
    using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string, List, Map>;

    /// Returns the value in its own type.
    const Variant& variant() const { return m_value; }

private:
    Variant m_value;
};

} // namespace vfBase
