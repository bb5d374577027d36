// SPDX-License-Identifier: MIT
#pragma once

#include "reading/JobControl.h"

#include <functional>
#include <memory>
#include <string>

namespace vfViewer {

/// Work on a file that goes on in a thread of its own and can be waited for.
///
/// Jobs are made, asked and destroyed on one thread. What the work throws ends the work and nothing else.
class Job
{
public:
    /// Cancels the job, unless it is done. Does not wait for its thread.
    virtual ~Job();

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    /// Has a function called, on another thread, as soon as the job is done; at once if it is.
    void whenDone(std::function<void()> function);

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
    using Work = std::function<void(JobControl& control)>;

    explicit Job(std::string path);

    /// Starts the work; where the system has no thread to give, does it here.
    void start(Work work);

private:
    struct Shared;

    std::string m_path;
    std::shared_ptr<Shared> m_shared;
};

} // namespace vfViewer
