// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/base/SettingsValue.h>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vfBase {

/// The properties of a settings class that are kept: name, getter and setter, declared once beside its source.
///
///     static const vfBase::SettingsProperties properties("solar::Settings",
///         {vfBase::SettingsProperties::property("planets", &SolarSettings::getPlanets, &SolarSettings::setPlanets)});
///
/// The virtual table of a settings class is fixed, so the store finds the list by "libraryName::className".
/// A static object: it counts while it lives, and of two for one class the later one does.
class VFBASE_EXPORT SettingsProperties
{
public:
    struct Property
    {
        std::string name;
        std::function<SettingsValue(const SettingsObjectPrivate&)> get;

        /// Returns false for a value of the wrong kind, and leaves the object as it was.
        std::function<bool(SettingsObjectPrivate&, const SettingsValue&)> set;
    };

    SettingsProperties(const char* className, std::vector<Property> properties);
    ~SettingsProperties();

    SettingsProperties(const SettingsProperties&) = delete;
    SettingsProperties& operator=(const SettingsProperties&) = delete;

    const std::vector<Property>& properties() const { return m_properties; }

    /// @return the list of the object's class, null when it has none
    static const SettingsProperties* find(const SettingsObjectPrivate& object);

    /// A property of a plain kind, by its accessors.
    template <class Class, class Result, class Argument>
    static Property property(const char* name, Result (Class::*getter)() const,
                             void (Class::*setter)(Argument))
    {
        using Value = std::decay_t<Argument>;
        return property<Class>(
            name, [getter](const Class& object) { return SettingsValue((object.*getter)()); },
            [setter](Class& object, const SettingsValue& value) {
                Value read{};
                if (!value.read(read))
                    return false;
                (object.*setter)(read);
                return true;
            });
    }

    /// A property of any other kind: @p get makes a SettingsValue of a const Class&, @p set takes one into a Class&.
    template <class Class, class Get, class Set>
    static Property property(const char* name, Get get, Set set)
    {
        return {name,
                [get](const SettingsObjectPrivate& object) -> SettingsValue {
                    return get(static_cast<const Class&>(object));
                },
                [set](SettingsObjectPrivate& object, const SettingsValue& value) -> bool {
                    return set(static_cast<Class&>(object), value);
                }};
    }

private:
    std::string m_className;
    std::vector<Property> m_properties;
};

} // namespace vfBase
