// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

class Settings;
class SettingsObject;

/// Registers a settings object with a store when it is constructed, as a static object of a library.
///
///     static const vfBase::RegisterSettingsObjectProxy proxy(vfBase::SettingsObject(SolarSettings::instance(false)),
///                                                            vfBase::Settings::global());
///
/// The store holds the object until the process ends; it cannot be unregistered.
class VFBASE_EXPORT RegisterSettingsObjectProxy
{
public:
    /// Adds @p object to @p settings, in place of one with the same names. An invalid handle is ignored.
    RegisterSettingsObjectProxy(const SettingsObject& object, Settings& settings);
};

} // namespace vfBase
