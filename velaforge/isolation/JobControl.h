// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>

namespace vfIsolation {

/// The state that the thread of a job shares with the threads that wait for it.
struct VFISOLATION_EXPORT JobControl
{
    JobControl();
    ~JobControl();

    JobControl(const JobControl&) = delete;
    JobControl& operator=(const JobControl&) = delete;

    /// Cancels the job: ends what waits in waitForSocket(), now and later. May be called on any thread.
    /// @return false when it is too late, see tryCommit()
    bool cancel();

    /// Announces work that must not be interrupted. @return false when the job was cancelled before
    bool tryCommit();

    /// Returns whether that work has begun.
    bool isCommitting() const { return m_isCommitting; }

    std::atomic<bool> isCancelled{false}; ///< set by cancel()
    std::atomic<float> progress{-1};      ///< from 0 to 1; less than 0 while that is not known

    /// Returns a descriptor that is readable when the job is cancelled.
    int wakeUp() const { return m_wakeUp; }

private:
    std::mutex m_mutex;
    std::atomic<bool> m_isCommitting{false};
    const int m_wakeUp;
};

/// Why waitForSocket() returned.
enum class SocketWait
{
    Ready,
    Cancelled,
    TooLong
};

/// Waits until a socket is ready or gone, the job is cancelled, or the time is over.
/// @param control  of the job
/// @param socket   negative for none, to wait for the others
/// @param events   as poll(2) has them
/// @param end      when the time is over
/// @param isInTime  called every 50 milliseconds; when it returns false, that is too long
VFISOLATION_EXPORT SocketWait waitForSocket(JobControl& control, int socket, short events,
                                            std::chrono::steady_clock::time_point end,
                                            const std::function<bool()>& isInTime = nullptr);

} // namespace vfIsolation
