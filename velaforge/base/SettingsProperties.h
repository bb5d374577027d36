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

/// Declares the properties of a settings class that the store saves: name, getter and setter.
///
///     static const vfBase::SettingsProperties properties("solar::Settings",
///         {vfBase::SettingsProperties::property("planets", &SolarSettings::getPlanets, &SolarSettings::setPlanets)});
///
/// The virtual table of a settings class is fixed, so the store finds the list by "libraryName::className".
/// Define a static object in the source file of the class: it is in use while it exists, and of two for one
/// class the later one is used.
class VFBASE_EXPORT SettingsProperties
{
public:
    /// One property of a settings class.
    struct Property
    {
        /// The key in the settings file.
        std::string name;

        /// Returns the value of an object.
        std::function<SettingsValue(const SettingsObjectPrivate&)> get;

        /// Sets the value of an object. Returns false, with the object unchanged, for a value of the wrong
        /// kind.
        std::function<bool(SettingsObjectPrivate&, const SettingsValue&)> set;
    };

    /// Declares the properties of the class @p className, written "libraryName::className".
    SettingsProperties(const char* className, std::vector<Property> properties);
    ~SettingsProperties();

    SettingsProperties(const SettingsProperties&) = delete;
    SettingsProperties& operator=(const SettingsProperties&) = delete;

    /// Returns the properties, in order of declaration.
    const std::vector<Property>& properties() const { return m_properties; }

    /// Returns the list of the class of @p object, null if there is none.
    static const SettingsProperties* find(const SettingsObjectPrivate& object);

    /// Returns a property of a plain type, by its name and accessors.
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

    /// Returns a property of any other type: @p get returns a SettingsValue for a const Class&; @p set sets a
    /// Class& from one and returns false for a value of the wrong kind. @p name is the key in the settings
    /// file.
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
