// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsBase.h>
#include <velaforge/dockwindows/DockWindow.h>

#include <map>
#include <string>

namespace vfBase {
class SettingsProperties;
}

namespace vfApplication {

/// How the dock windows stand, by id, kept between runs. DockWindowManager::saveDockWindowsState writes it, the toolkit
/// side reads it when it lays out its windows.
class VFAPPLICATION_EXPORT DockWindowManagerSettings : public vfBase::SettingsBase<DockWindowManagerSettings>
{
public:
    /// What is kept of a window.
    struct DockWindowState
    {
        bool visible;
        bool autoHide;
        DockWindow::DockArea area;
    };

    enum DockWindowVisibleState
    {
        VisibleStateUnknown = 0, ///< nothing is kept of that window
        StoredVisible = 1,
        StoredNotVisible = 2
    };

    enum DockWindowAutoHideState
    {
        AutoHideStateUnknown = 0, ///< nothing is kept of that window
        StoredAutoHidden = 1,
        StoredNotAutoHidden = 2
    };

    DockWindowManagerSettings(const DockWindowManagerSettings& other, const osg::CopyOp& copyop);

    /// @param erase  releases the object for good
    /// @return the one object; null once it was released, by erasing or at exit
    static DockWindowManagerSettings* instance(bool erase);

    const std::map<std::string, DockWindowState>& getDockWindowList() const { return m_dockWindowList; }
    unsigned int getNumDockWindows() const;

    // Asking for a window of which nothing is kept makes no record of it.

    /// @return the area; NoDockArea for an unknown window
    DockWindow::DockArea getDockWindowAreaState(std::string id) const;
    DockWindowVisibleState getDockWindowVisibleState(std::string id) const;
    DockWindowAutoHideState getDockWindowAutoHideState(std::string id) const;

    // A window of which nothing is kept gets a record: visible, auto-hidden and in no area, but for what is set.

    void setDockWindowVisibleState(std::string id, bool visible);
    void setDockWindowAutoHideState(std::string id, bool autoHide);
    void setDockWindowAreaState(std::string id, DockWindow::DockArea area);

protected:
    ~DockWindowManagerSettings() override;

private:
    friend vfBase::SettingsBase<DockWindowManagerSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "DockWindows";

    static const vfBase::SettingsProperties s_properties; ///< what the store keeps

    DockWindowManagerSettings();
    const DockWindowState* find(const std::string& id) const;
    DockWindowState& findOrMake(const std::string& id);

    std::map<std::string, DockWindowState> m_dockWindowList;
};

} // namespace vfApplication
