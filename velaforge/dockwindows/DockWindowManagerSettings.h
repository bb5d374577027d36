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

/// Stores the state of the dock windows between runs, by id. DockWindowManager::saveDockWindowsState writes
/// it; the toolkit side reads it when it lays out its windows.
class VFAPPLICATION_EXPORT DockWindowManagerSettings : public vfBase::SettingsBase<DockWindowManagerSettings>
{
public:
    /// The stored state of a window.
    struct DockWindowState
    {
        bool visible;              ///< whether it is shown
        bool autoHide;             ///< whether it is reduced to a button at the edge
        DockWindow::DockArea area; ///< where it is docked
    };

    /// Whether a window is stored as visible.
    enum DockWindowVisibleState
    {
        VisibleStateUnknown = 0, ///< there is no record of the window
        StoredVisible = 1,       ///< stored as visible
        StoredNotVisible = 2     ///< stored as not visible
    };

    /// Whether a window is stored as auto-hidden.
    enum DockWindowAutoHideState
    {
        AutoHideStateUnknown = 0, ///< there is no record of the window
        StoredAutoHidden = 1,     ///< stored as auto-hidden
        StoredNotAutoHidden = 2   ///< stored as not auto-hidden
    };

    /// Copies the records.
    DockWindowManagerSettings(const DockWindowManagerSettings& other, const osg::CopyOp& copyop);

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released, by @p erase or when the process ends
    static DockWindowManagerSettings* instance(bool erase);

    /// Returns the records, by id.
    const std::map<std::string, DockWindowState>& getDockWindowList() const { return m_dockWindowList; }

    /// Returns the number of records.
    unsigned int getNumDockWindows() const;

    /// Returns the stored area of the window @p id; DockWindow::NoDockArea if there is no record.
    DockWindow::DockArea getDockWindowAreaState(std::string id) const;

    /// Returns whether the window @p id is stored as visible; VisibleStateUnknown if there is no record.
    DockWindowVisibleState getDockWindowVisibleState(std::string id) const;

    /// Returns whether the window @p id is stored as auto-hidden; AutoHideStateUnknown if there is no record.
    DockWindowAutoHideState getDockWindowAutoHideState(std::string id) const;

    // Each setter adds a record if there is none for the window: visible, auto-hidden and not docked, except
    // for the value that is set.

    /// Stores whether the window @p id is visible.
    void setDockWindowVisibleState(std::string id, bool visible);

    /// Stores whether the window @p id is auto-hidden.
    void setDockWindowAutoHideState(std::string id, bool autoHide);

    /// Stores the area where the window @p id is docked.
    void setDockWindowAreaState(std::string id, DockWindow::DockArea area);

protected:
    ~DockWindowManagerSettings() override;

private:
    friend class vfBase::SettingsBase<DockWindowManagerSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "DockWindows";

    static const vfBase::SettingsProperties s_properties; ///< what the store saves

    DockWindowManagerSettings();
    const DockWindowState* find(const std::string& id) const;
    DockWindowState& findOrMake(const std::string& id);

    std::map<std::string, DockWindowState> m_dockWindowList;
};

} // namespace vfApplication
