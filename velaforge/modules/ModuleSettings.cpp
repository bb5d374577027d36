// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleSettings.h>

#include <velaforge/base/SettingsProperties.h>

#include <utility>

namespace vfApplication {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

const SettingsProperties
    ModuleSettings::s_properties("vfApplication::Modules",
                                 {SettingsProperties::property<ModuleSettings>(
                                     "modules",
                                     [](const ModuleSettings& settings) -> SettingsValue {
                                         SettingsValue::Map modules;
                                         for (const auto& [name, isEnabled] : settings.m_moduleList)
                                             modules.emplace(name, isEnabled);
                                         return modules;
                                     },
                                     [](ModuleSettings& settings, const SettingsValue& value) {
                                         const SettingsValue::Map* modules = value.map();
                                         if (!modules)
                                             return false;
                                         std::map<std::string, bool> list;
                                         for (const auto& [name, state] : *modules) {
                                             if (!state.read(list[name]))
                                                 return false;
                                         }
                                         settings.m_moduleList.swap(list);
                                         return true;
                                     })});

ModuleSettings::ModuleSettings() = default;

ModuleSettings::ModuleSettings(const ModuleSettings& other, const osg::CopyOp& copyop)
    : SettingsBase(other, copyop), m_moduleList(other.m_moduleList)
{}

ModuleSettings::~ModuleSettings() = default;

ModuleSettings* ModuleSettings::instance(bool erase)
{
    return singleton(erase);
}

bool ModuleSettings::getModuleStateSettings(std::string name) const
{
    const auto found = m_moduleList.find(name);
    return found != m_moduleList.end() && found->second;
}

void ModuleSettings::setModuleStateSettings(std::string name, bool state)
{
    m_moduleList[std::move(name)] = state;
}

bool ModuleSettings::isValidModule(std::string name)
{
    return m_moduleList.count(name) != 0;
}

bool ModuleSettings::removeModule(std::string name)
{
    return m_moduleList.erase(name) != 0;
}

unsigned int ModuleSettings::getNumModules() const
{
    return static_cast<unsigned int>(m_moduleList.size());
}

} // namespace vfApplication
