// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

class Settings;
class SettingsObject;

/// Registers a settings object with a store when it is constructed. A library defines a static object of this
/// class.
///
///     static const vfBase::RegisterSettingsObjectProxy proxy(vfBase::SettingsObject(SolarSettings::instance(false)),
///                                                            vfBase::Settings::global());
///
/// An object cannot be unregistered: the store holds a reference on it.
class VFBASE_EXPORT RegisterSettingsObjectProxy
{
public:
    /// Registers @p object with the store @p settings.
    RegisterSettingsObjectProxy(const SettingsObject& object, Settings& settings);
};

} // namespace vfBase
