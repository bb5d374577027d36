// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleSettings.h>

#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

#include <utility>

namespace vfApplication {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

SettingsValue modulesValue(const ModuleSettings& settings)
{
    SettingsValue::Map modules;
    for (const auto& [name, isEnabled] : settings.getModuleList())
        modules.emplace(name, isEnabled);
    return modules;
}

bool takeModules(ModuleSettings& settings, const SettingsValue& value)
{
    const SettingsValue::Map* modules = value.map();
    if (!modules)
        return false;
    std::map<std::string, bool> list;
    for (const auto& [name, state] : *modules) {
        if (!state.read(list[name]))
            return false;
    }
    settings.getModuleList().swap(list);
    return true;
}

const SettingsProperties
    properties("vfApplication::Modules",
               {SettingsProperties::property<ModuleSettings>("modules", modulesValue, takeModules)});

} // namespace

ModuleSettings::ModuleSettings() = default;

ModuleSettings::ModuleSettings(const ModuleSettings& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_moduleList(other.m_moduleList)
{}

ModuleSettings::~ModuleSettings() = default;

ModuleSettings* ModuleSettings::instance(bool erase)
{
    static osg::ref_ptr<ModuleSettings> settings = new ModuleSettings;
    if (erase)
        settings = nullptr;
    return settings.get();
}

osg::Object* ModuleSettings::cloneType() const
{
    return new ModuleSettings;
}

osg::Object* ModuleSettings::clone(const osg::CopyOp& copyop) const
{
    return new ModuleSettings(*this, copyop);
}

bool ModuleSettings::isSameKindAs(const osg::Object* object) const
{
    return dynamic_cast<const ModuleSettings*>(object) != nullptr;
}

const char* ModuleSettings::libraryName() const
{
    return "vfApplication";
}

const char* ModuleSettings::className() const
{
    return "Modules";
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
