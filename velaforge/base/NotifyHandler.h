// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>

#include <atomic>

namespace vfBase {

/// Whether, and where to, diagnostics go that are written through osg::notify.
///
///     if (vfBase::NotifyHandler::instance().isNotifyEnabled())
///         osg::notify(osg::WARN) << "Failed to save user settings!" << std::endl;
///
/// Each message of this family of libraries is guarded by that test. install() makes this object the
/// sink of osg::notify for the whole process: every message goes to standard error, none to standard
/// output, and warnings and worse are kept in the monitor until clearMonitor().
class VFBASE_EXPORT NotifyHandler
{
public:
    static NotifyHandler& instance();

    /// @return true unless notification was switched off
    bool isNotifyEnabled() const { return m_enabled; }
    void setNotifyEnabled(bool enabled) { m_enabled = enabled; }

    /// Becomes the sink of osg::notify. Meant for programs, early in main(); a second call changes nothing.
    void install();

    /// While quiet, messages go into the monitor only. Fatal ones are written all the same.
    void setQuiet(bool quiet) { m_quiet = quiet; }
    bool isQuiet() const { return m_quiet; }

private:
    NotifyHandler() = default;
    ~NotifyHandler() = default;
    NotifyHandler(const NotifyHandler&) = delete;
    NotifyHandler& operator=(const NotifyHandler&) = delete;

    std::atomic<bool> m_enabled{true};
    std::atomic<bool> m_quiet{false};
    std::atomic<bool> m_installed{false};
};

/// Forgets what the monitor has kept. The loading of a document begins with this, so that
/// the monitor then tells what the readers of that document complained about.
VFBASE_EXPORT void clearMonitor();

/// @return warnings and worse since the last clearMonitor(), oldest first, without line ends: a list of its
///         own. Beyond 1000 messages the later ones are dropped. Empty unless NotifyHandler is installed.
VFBASE_EXPORT StringList getMonitorMessages();

} // namespace vfBase
