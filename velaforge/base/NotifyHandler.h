// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/StringList.h>

#include <atomic>

namespace vfBase {

/// Switches the diagnostics that are written through osg::notify, and collects them.
///
///     if (vfBase::NotifyHandler::instance().isNotifyEnabled())
///         osg::notify(osg::WARN) << "Failed to save user settings!" << std::endl;
///
/// The libraries of this family test this before each message. install() makes this object the handler of
/// osg::notify for the whole process: it writes every message to standard error, none to standard output, and
/// stores warnings and errors in the monitor until clearMonitor(). It works until the last static destructor has
/// run. The flags may be set and read on any thread.
class VFBASE_EXPORT NotifyHandler
{
public:
    /// Returns the object of the process.
    static NotifyHandler& instance();

    /// Returns whether the libraries of this family write messages; true unless switched off.
    bool isNotifyEnabled() const { return m_enabled; }

    /// Switches the messages of this family of libraries on or off.
    void setNotifyEnabled(bool enabled) { m_enabled = enabled; }

    /// Makes this object the handler of osg::notify. A program calls it early in main(); a second call
    /// changes nothing.
    void install();

    /// Sets whether messages are stored in the monitor only. Fatal messages are written all the same.
    void setQuiet(bool quiet) { m_quiet = quiet; }

    /// Returns whether messages go into the monitor only.
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

/// Clears the monitor. Loading a document begins with this call, so that the monitor then has the messages of
/// that document's readers only.
VFBASE_EXPORT void clearMonitor();

/// Returns a new list of the warnings and errors since the last clearMonitor(), oldest first, without line
/// ends. Only the first 1000 are stored. Empty unless NotifyHandler is installed.
VFBASE_EXPORT StringList getMonitorMessages();

} // namespace vfBase
