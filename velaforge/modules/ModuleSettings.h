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

/// Which modules are enabled, by module name, kept between runs.
///
/// ModuleRegistry reads it while it looks for modules, and empties it when it has found their directory. In a program
/// that is before the settings are loaded, so what the settings file holds comes in afterwards and stays as it is until
/// the next save.
class VFAPPLICATION_EXPORT ModuleSettings : public vfBase::SettingsBase<ModuleSettings>
{
public:
    ModuleSettings(const ModuleSettings& other, const osg::CopyOp& copyop);

    /// @param erase  releases the object for good
    /// @return the one object; null once it was released, by erasing or at exit
    static ModuleSettings* instance(bool erase);

    /// Module name to whether it is enabled, in order of the names.
    std::map<std::string, bool>& getModuleList() { return m_moduleList; }
    const std::map<std::string, bool>& getModuleList() const { return m_moduleList; }

    /// @return whether the module is enabled; false for an unknown name
    bool getModuleStateSettings(std::string name) const;
    void setModuleStateSettings(std::string name, bool state);

    /// @return whether the name is in the list, enabled or not; it says nothing of the module's file
    bool isValidModule(std::string name);

    /// @return true if there was an entry of that name
    bool removeModule(std::string name);

    unsigned int getNumModules() const;

protected:
    ~ModuleSettings() override;

private:
    friend vfBase::SettingsBase<ModuleSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "Modules";

    static const vfBase::SettingsProperties s_properties; ///< what the store keeps

    ModuleSettings();

    std::map<std::string, bool> m_moduleList;
};

} // namespace vfApplication
