// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>

#include <atomic>

namespace vfBase {

/// Decides whether diagnostics that are written through osg::notify appear, and where.
///
///     if (vfBase::NotifyHandler::instance().isNotifyEnabled())
///         osg::notify(osg::WARN) << "Failed to save user settings!" << std::endl;
///
/// Each message of this family of libraries is guarded by that test. install() makes this object the handler
/// of osg::notify for the whole process: it writes every message to standard error, none to standard output,
/// and keeps warnings and worse in the monitor until clearMonitor(). It works until the last static
/// destructor has run. The flags may be set and read on any thread.
class VFBASE_EXPORT NotifyHandler
{
public:
    /// @return the one object of the process
    static NotifyHandler& instance();

    /// @return true unless notification was switched off
    bool isNotifyEnabled() const { return m_enabled; }

    /// Switches notification on or off for the libraries' own messages.
    void setNotifyEnabled(bool enabled) { m_enabled = enabled; }

    /// Becomes the handler of osg::notify. For programs, early in main(); a second call does nothing.
    void install();

    /// While quiet, only fatal messages are written; the monitor keeps warnings and worse as before.
    void setQuiet(bool quiet) { m_quiet = quiet; }

    /// @return true while quiet
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

/// Removes the messages that the monitor keeps. A document that is loaded begins with this, so that the
/// monitor then has the messages of its readers.
VFBASE_EXPORT void clearMonitor();

/// @return a new list of the warnings and worse since the last clearMonitor(), oldest first, without line
///         ends. After 1000 messages further ones are dropped. Empty unless NotifyHandler is installed
VFBASE_EXPORT StringList getMonitorMessages();

} // namespace vfBase
