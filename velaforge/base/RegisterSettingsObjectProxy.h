// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

class Settings;
class SettingsObject;

/// Constructing one, as a static object of a library, makes a settings object known to a store.
///
///     static const vfBase::RegisterSettingsObjectProxy proxy(vfBase::SettingsObject(SolarSettings::instance(false)),
///                                                            vfBase::Settings::global());
///
/// There is no way back: the store keeps the object.
class VFBASE_EXPORT RegisterSettingsObjectProxy
{
public:
    RegisterSettingsObjectProxy(const SettingsObject& object, Settings& settings);
};

} // namespace vfBase
