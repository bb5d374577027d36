// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowManagerSettings.h>

#include <velaforge/base/SettingsProperties.h>

namespace vfApplication {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

namespace {

template <class Field>
bool readField(const SettingsValue::Map& record, const char* name, Field& field)
{
    const auto found = record.find(name);
    return found != record.end() && found->second.read(field);
}

bool readState(const SettingsValue& value, DockWindowManagerSettings::DockWindowState& state)
{
    const SettingsValue::Map* record = value.map();
    int area = 0;
    if (!record || !readField(*record, "visible", state.visible) ||
        !readField(*record, "autoHide", state.autoHide) || !readField(*record, "area", area))
        return false;
    state.area = static_cast<DockWindow::DockArea>(area);
    return true;
}

} // namespace

const SettingsProperties DockWindowManagerSettings::s_properties(
    "vfApplication::DockWindows",
    {SettingsProperties::property<DockWindowManagerSettings>(
        "windows",
        [](const DockWindowManagerSettings& settings) -> SettingsValue {
            SettingsValue::Map windows;
            for (const auto& [id, state] : settings.m_dockWindowList)
                windows.emplace(id, SettingsValue::Map{{"visible", state.visible},
                                                       {"autoHide", state.autoHide},
                                                       {"area", static_cast<int>(state.area)}});
            return windows;
        },
        [](DockWindowManagerSettings& settings, const SettingsValue& value) {
            const SettingsValue::Map* windows = value.map();
            if (!windows)
                return false;
            std::map<std::string, DockWindowState> list;
            for (const auto& [id, record] : *windows) {
                if (!readState(record, list[id]))
                    return false;
            }
            settings.m_dockWindowList.swap(list);
            return true;
        })});

DockWindowManagerSettings::DockWindowManagerSettings() = default;

DockWindowManagerSettings::DockWindowManagerSettings(const DockWindowManagerSettings& other,
                                                     const osg::CopyOp& copyop)
    : SettingsBase(other, copyop), m_dockWindowList(other.m_dockWindowList)
{}

DockWindowManagerSettings::~DockWindowManagerSettings() = default;

DockWindowManagerSettings* DockWindowManagerSettings::instance(bool erase)
{
    return singleton(erase);
}

unsigned int DockWindowManagerSettings::getNumDockWindows() const
{
    return static_cast<unsigned int>(m_dockWindowList.size());
}

const DockWindowManagerSettings::DockWindowState* DockWindowManagerSettings::find(const std::string& id) const
{
    const auto found = m_dockWindowList.find(id);
    return found == m_dockWindowList.end() ? nullptr : &found->second;
}

DockWindowManagerSettings::DockWindowState& DockWindowManagerSettings::findOrMake(const std::string& id)
{
    // Auto-hidden by contract; saveDockWindowsState sets all three values.
    return m_dockWindowList.emplace(id, DockWindowState{true, true, DockWindow::NoDockArea}).first->second;
}

DockWindow::DockArea DockWindowManagerSettings::getDockWindowAreaState(std::string id) const
{
    const DockWindowState* state = find(id);
    return state ? state->area : DockWindow::NoDockArea;
}

DockWindowManagerSettings::DockWindowVisibleState
DockWindowManagerSettings::getDockWindowVisibleState(std::string id) const
{
    const DockWindowState* state = find(id);
    if (!state)
        return VisibleStateUnknown;
    return state->visible ? StoredVisible : StoredNotVisible;
}

DockWindowManagerSettings::DockWindowAutoHideState
DockWindowManagerSettings::getDockWindowAutoHideState(std::string id) const
{
    const DockWindowState* state = find(id);
    if (!state)
        return AutoHideStateUnknown;
    return state->autoHide ? StoredAutoHidden : StoredNotAutoHidden;
}

void DockWindowManagerSettings::setDockWindowVisibleState(std::string id, bool visible)
{
    findOrMake(id).visible = visible;
}

void DockWindowManagerSettings::setDockWindowAutoHideState(std::string id, bool autoHide)
{
    findOrMake(id).autoHide = autoHide;
}

void DockWindowManagerSettings::setDockWindowAreaState(std::string id, DockWindow::DockArea area)
{
    findOrMake(id).area = area;
}

} // namespace vfApplication
