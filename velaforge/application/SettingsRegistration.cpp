// SPDX-License-Identifier: MIT Registers the settings objects of this library with the store when the library
// is loaded. All are in one file, because C++ fixes the order of static objects within one file only.

#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/dockwindows/DockWindowManagerSettings.h>
#include <velaforge/documents/FileHistorySettings.h>
#include <velaforge/modules/ModuleSettings.h>

namespace vfApplication {

namespace {

using vfBase::RegisterSettingsObjectProxy;
using vfBase::Settings;
using vfBase::SettingsObject;

const RegisterSettingsObjectProxy applicationSettings(SettingsObject(ApplicationSettings::instance(false)),
                                                      Settings::global());
const RegisterSettingsObjectProxy moduleSettings(SettingsObject(ModuleSettings::instance(false)),
                                                 Settings::global());
const RegisterSettingsObjectProxy
    dockWindowSettings(SettingsObject(DockWindowManagerSettings::instance(false)), Settings::global());
const RegisterSettingsObjectProxy fileHistorySettings(SettingsObject(FileHistorySettings::instance(false)),
                                                      Settings::global());

} // namespace

} // namespace vfApplication
