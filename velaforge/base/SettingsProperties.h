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

/// The properties of a settings class that the store keeps: name, getter and setter, declared once beside its
/// source.
///
///     static const vfBase::SettingsProperties properties("solar::Settings",
///         {vfBase::SettingsProperties::property("planets", &SolarSettings::getPlanets, &SolarSettings::setPlanets)});
///
/// The store finds the list by "libraryName::className", since the virtual operations of a settings class are
/// fixed. Make it a static object: the store uses it while it lives, and of two for one class the one that
/// was made later.
class VFBASE_EXPORT SettingsProperties
{
public:
    struct Property
    {
        /// The key in the file.
        std::string name;

        /// Returns the object's value.
        std::function<SettingsValue(const SettingsObjectPrivate&)> get;

        /// Sets the object's value. Returns false for a value of the wrong kind, and leaves the object as it
        /// was.
        std::function<bool(SettingsObjectPrivate&, const SettingsValue&)> set;
    };

    /// Declares the properties of a class.
    /// @param className  "libraryName::className" of its objects
    SettingsProperties(const char* className, std::vector<Property> properties);

    /// Ends the declaration; an earlier one for the same class counts again.
    ~SettingsProperties();

    SettingsProperties(const SettingsProperties&) = delete;
    SettingsProperties& operator=(const SettingsProperties&) = delete;

    /// @return the properties, in the order in which they were declared
    const std::vector<Property>& properties() const { return m_properties; }

    /// @return the list of the object's class, null when it has none
    static const SettingsProperties* find(const SettingsObjectPrivate& object);

    /// @return a property of a kind that SettingsValue reads, by its accessors
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

    /// @return a property of any other kind: @p get makes a SettingsValue of a const Class&, @p set takes one
    ///         into a Class&.
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
