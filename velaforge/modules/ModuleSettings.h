// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsBase.h>

#include <map>
#include <string>

namespace vfBase {
class SettingsProperties;
}

namespace vfApplication {

/// Stores between runs which modules are enabled, by module name.
///
/// ModuleRegistry reads the list while it searches for modules, and clears it after it has searched their
/// directory. A program loads the settings after that: the list of the settings file is then loaded and saved
/// unchanged.
class VFAPPLICATION_EXPORT ModuleSettings : public vfBase::SettingsBase<ModuleSettings>
{
public:
    /// Copies the list.
    ModuleSettings(const ModuleSettings& other, const osg::CopyOp& copyop);

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released, by @p erase or when the process ends
    static ModuleSettings* instance(bool erase);

    /// Returns the list: module name to true if it is enabled. Changes of it change the settings.
    std::map<std::string, bool>& getModuleList() { return m_moduleList; }

    /// Returns the list: module name to true if it is enabled.
    const std::map<std::string, bool>& getModuleList() const { return m_moduleList; }

    /// Returns whether the module @p name is enabled; false for an unknown name.
    bool getModuleStateSettings(std::string name) const;

    /// Enables the module @p name if @p state is true, otherwise disables it. Adds an unknown name.
    void setModuleStateSettings(std::string name, bool state);

    /// Returns whether the module @p name is in the list, enabled or not. Does not look at the module's file.
    bool isValidModule(std::string name);

    /// Removes the module @p name from the list.
    /// @return false if the list does not have it
    bool removeModule(std::string name);

    /// Returns the number of modules in the list.
    unsigned int getNumModules() const;

protected:
    ~ModuleSettings() override;

private:
    friend class vfBase::SettingsBase<ModuleSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "Modules";

    static const vfBase::SettingsProperties s_properties; ///< what the store saves

    ModuleSettings();

    std::map<std::string, bool> m_moduleList;
};

} // namespace vfApplication
