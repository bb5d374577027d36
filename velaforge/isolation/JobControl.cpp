// SPDX-License-Identifier: MIT
#include <velaforge/isolation/JobControl.h>

#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

constexpr int pollMilliseconds = 50;

} // namespace

JobControl::JobControl() : m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

JobControl::~JobControl()
{
    if (m_wakeUp >= 0)
        close(m_wakeUp);
}

bool JobControl::tryCommit()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isCommitting = !isCancelled;
    return m_isCommitting;
}

bool JobControl::cancel()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_isCommitting)
            return false;
        isCancelled = true;
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_wakeUp, &one, sizeof(one));
    return true;
}

SocketWait waitForSocket(JobControl& control, int socket, short events,
                         std::chrono::steady_clock::time_point end, const std::function<bool()>& isInTime)
{
    for (;;) {
        // Without a descriptor to wake it up, the end of the interval does.
        pollfd waited[] = {{socket, events, 0}, {control.wakeUp(), POLLIN, 0}};
        const int ready = poll(waited, 2, pollMilliseconds);
        if (control.isCancelled)
            return SocketWait::Cancelled;
        if (ready > 0 && waited[0].revents != 0)
            return SocketWait::Ready;
        // A signal that interrupts the waiting counts as an interval.
        if (std::chrono::steady_clock::now() >= end || (isInTime && !isInTime()))
            return SocketWait::TooLong;
    }
}

} // namespace vfIsolation
