// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsObjectPrivate.h>

#include <map>
#include <string>

namespace vfApplication {

/// Which modules are enabled, by module name, kept between runs.
///
/// ModuleRegistry reads it while it looks for modules, and empties it when it has found their directory. In a program
/// that is before the settings are loaded, so what the settings file holds comes in afterwards and stays as it is until
/// the next save.
class VFAPPLICATION_EXPORT ModuleSettings : public vfBase::SettingsObjectPrivate
{
public:
    ModuleSettings(const ModuleSettings& other, const osg::CopyOp& copyop);

    /// @param erase  lets go of the object for good
    /// @return the one object; null once it was erased
    static ModuleSettings* instance(bool erase);

    /// @return a new object without any module
    osg::Object* cloneType() const override;

    /// @return a new object with the present list
    osg::Object* clone(const osg::CopyOp& copyop) const override;
    bool isSameKindAs(const osg::Object* object) const override;
    const char* libraryName() const override;
    const char* className() const override;

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
    ModuleSettings();

    std::map<std::string, bool> m_moduleList;
};

} // namespace vfApplication
