// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowManagerSettings.h>

#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

namespace vfApplication {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

/// What the store reads and writes.
struct DockWindowManagerSettingsProperties
{
    static SettingsValue windows(const DockWindowManagerSettings& settings)
    {
        SettingsValue::Map windows;
        for (const auto& [id, state] : settings.m_dockWindowList)
            windows.emplace(id, SettingsValue::Map{{"visible", state.visible},
                                                   {"autoHide", state.autoHide},
                                                   {"area", static_cast<int>(state.area)}});
        return windows;
    }

    static bool takeWindows(DockWindowManagerSettings& settings, const SettingsValue& value)
    {
        const SettingsValue::Map* windows = value.map();
        if (!windows)
            return false;
        std::map<std::string, DockWindowManagerSettings::DockWindowState> list;
        for (const auto& [id, record] : *windows) {
            if (!takeState(list[id], record))
                return false;
        }
        settings.m_dockWindowList.swap(list);
        return true;
    }

private:
    static bool takeState(DockWindowManagerSettings::DockWindowState& state, const SettingsValue& record)
    {
        int area = 0;
        if (!takeField(state.visible, record, "visible") || !takeField(state.autoHide, record, "autoHide") ||
            !takeField(area, record, "area"))
            return false;
        state.area = static_cast<DockWindow::DockArea>(area);
        return true;
    }

    template <class Field>
    static bool takeField(Field& field, const SettingsValue& record, const char* name)
    {
        const SettingsValue::Map* fields = record.map();
        const auto found = fields ? fields->find(name) : SettingsValue::Map::const_iterator();
        return fields && found != fields->end() && found->second.read(field);
    }
};

namespace {

const SettingsProperties properties("vfApplication::DockWindows",
                                    {SettingsProperties::property<DockWindowManagerSettings>(
                                        "windows", DockWindowManagerSettingsProperties::windows,
                                        DockWindowManagerSettingsProperties::takeWindows)});

} // namespace

DockWindowManagerSettings::DockWindowManagerSettings() = default;

DockWindowManagerSettings::DockWindowManagerSettings(const DockWindowManagerSettings& other,
                                                     const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_dockWindowList(other.m_dockWindowList)
{}

DockWindowManagerSettings::~DockWindowManagerSettings() = default;

DockWindowManagerSettings* DockWindowManagerSettings::instance(bool erase)
{
    static osg::ref_ptr<DockWindowManagerSettings> settings = new DockWindowManagerSettings;
    if (erase)
        settings = nullptr;
    return settings.get();
}

osg::Object* DockWindowManagerSettings::cloneType() const
{
    return new DockWindowManagerSettings;
}

osg::Object* DockWindowManagerSettings::clone(const osg::CopyOp& copyop) const
{
    return new DockWindowManagerSettings(*this, copyop);
}

bool DockWindowManagerSettings::isSameKindAs(const osg::Object* object) const
{
    return dynamic_cast<const DockWindowManagerSettings*>(object) != nullptr;
}

const char* DockWindowManagerSettings::libraryName() const
{
    return "vfApplication";
}

const char* DockWindowManagerSettings::className() const
{
    return "DockWindows";
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
    // Auto-hidden, too: a record that is worth anything has all three values set.
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
