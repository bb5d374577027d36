// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/WindowSettings.h>

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

namespace vfApplication {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

template <std::string WindowSettings::*field>
SettingsValue text(const WindowSettings& settings)
{
    return settings.*field;
}

template <std::string WindowSettings::*field>
bool takeText(WindowSettings& settings, const SettingsValue& value)
{
    return value.read(settings.*field);
}

SettingsValue shortcuts(const WindowSettings& settings)
{
    SettingsValue::Map keys;
    for (const auto& [command, sequence] : settings.shortcuts)
        keys.emplace(command, sequence);
    return keys;
}

bool takeShortcuts(WindowSettings& settings, const SettingsValue& value)
{
    const SettingsValue::Map* keys = value.map();
    if (!keys)
        return false;
    WindowSettings::Shortcuts taken;
    for (const auto& [command, sequence] : *keys) {
        if (!sequence.read(taken[command]))
            return false;
    }
    settings.shortcuts.swap(taken);
    return true;
}

const SettingsProperties
    properties("vfApplicationQt::WindowSettings",
               {SettingsProperties::property<WindowSettings>("geometry", text<&WindowSettings::geometry>,
                                                             takeText<&WindowSettings::geometry>),
                SettingsProperties::property<WindowSettings>("layout", text<&WindowSettings::layout>,
                                                             takeText<&WindowSettings::layout>),
                SettingsProperties::property<WindowSettings>("language", text<&WindowSettings::language>,
                                                             takeText<&WindowSettings::language>),
                SettingsProperties::property<WindowSettings>("shortcuts", shortcuts, takeShortcuts)});

const vfBase::RegisterSettingsObjectProxy registered(vfBase::SettingsObject(&WindowSettings::instance()),
                                                     vfBase::Settings::global());

} // namespace

WindowSettings::WindowSettings(const WindowSettings& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop),
      geometry(other.geometry),
      layout(other.layout),
      language(other.language),
      shortcuts(other.shortcuts)
{}

WindowSettings& WindowSettings::instance()
{
    static const osg::ref_ptr<WindowSettings> settings = new WindowSettings;
    return *settings;
}

} // namespace vfApplication
