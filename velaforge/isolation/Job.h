// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>
#include <velaforge/isolation/JobControl.h>

#include <functional>
#include <memory>
#include <string>

namespace vfIsolation {

/// Work on a file in a thread of its own, with progress and cancellation.
///
/// Jobs are made, asked and destroyed on one thread. An exception of the work ends the job and nothing else.
class VFISOLATION_EXPORT Job
{
public:
    /// Cancels the job, unless it is done. Does not wait for its thread.
    virtual ~Job();

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Has a function called, on another thread, as soon as the job is done; at once if it is.
    void whenDone(std::function<void()> function);

    /// Returns a descriptor that becomes readable when the job is done, and stays so: for poll(), a QSocketNotifier, and other
    /// event loops. It belongs to the job, which closes it. Negative when the system has no descriptor left.
    int doneDescriptor();

    /// Returns whether the work is done or was cancelled.
    bool isDone() const;

    /// Returns whether it was cancelled before it was done.
    bool isCancelled() const;

    /// Waits that many milliseconds at most. @return isDone()
    bool wait(int milliseconds);

    /// @return how far it has come, from 0 to 1; less than 0 while that is not known
    double progress() const;

    /// Cancels the work, unless it is done or cannot be cancelled any more, as when files are moved to their places: the job
    /// is done at once, and its process is ended.
    void cancel();

    /// The file.
    const std::string& path() const { return m_path; }

    /// Waits for the threads of all jobs, cancelled ones as well, which takes some milliseconds. To be called at the end of
    /// main(): what they load while they work is destroyed before anything that was there at the start.
    static void waitForThreads();

protected:
    /// The work of a job, called in its thread. It returns soon after the control is cancelled.
    using Work = std::function<void(JobControl& control)>;

    /// Prepares a job; start() begins it.
    /// @param path  of the file
    explicit Job(std::string path);

    /// Starts the work; where the system has no thread to give, does it here.
    void start(Work work);

private:
    struct Shared;

    std::string m_path;
    std::shared_ptr<Shared> m_shared;
};

} // namespace vfIsolation
