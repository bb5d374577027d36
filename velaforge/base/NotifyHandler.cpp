// SPDX-License-Identifier: MIT
#include <velaforge/base/NotifyHandler.h>

#include <osg/Notify>

#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>
#include <vector>

namespace vfBase {

namespace {

/// The stored messages. Safe on several threads: OpenSceneGraph may run readers on threads of its own.
class Monitor
{
public:
    static Monitor& instance()
    {
        // Never destroyed: static destructors of the program and of plug-ins may report warnings.
        static Monitor& monitor = *new Monitor;
        return monitor;
    }

    void add(const char* message)
    {
        constexpr std::size_t most = 1000;
        const std::lock_guard<std::mutex> guard(m_mutex);
        std::size_t length = std::strlen(message);
        while (length > 0 && (message[length - 1] == '\n' || message[length - 1] == '\r'))
            --length;
        if (length > 0 && m_messages.size() < most)
            m_messages.emplace_back(message, length);
    }

    void clear()
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_messages.clear();
    }

    std::vector<std::string> messages() const
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        return m_messages;
    }

private:
    mutable std::mutex m_mutex;
    std::vector<std::string> m_messages;
};

/// Writes every message to standard error. OpenSceneGraph's own handler writes messages of NOTICE and below
/// to standard output, which is for the program's results.
class Sink : public osg::NotifyHandler
{
public:
    void notify(osg::NotifySeverity severity, const char* message) override
    {
        if (severity == osg::FATAL || severity == osg::WARN)
            Monitor::instance().add(message);
        if (!vfBase::NotifyHandler::instance().isQuiet() || severity == osg::FATAL)
            std::fputs(message, stderr);
    }
};

} // namespace

NotifyHandler& NotifyHandler::instance()
{
    static NotifyHandler handler;
    return handler;
}

void NotifyHandler::install()
{
    if (!m_installed.exchange(true))
        osg::setNotifyHandler(new Sink);
}

void clearMonitor()
{
    Monitor::instance().clear();
}

StringList getMonitorMessages()
{
    StringList list;
    for (const std::string& message : Monitor::instance().messages())
        list.append(message);
    return list;
}

} // namespace vfBase
