// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ModelReader.h"
#include "reading/ReaderHost.h"

#include <functional>
#include <memory>
#include <string>

namespace vfViewer {

/// Reads a file in a process of its own, while this one goes on.
///
///     ReadJob job(ReadKind::Model, path);
///     while (!job.wait(100))
///         show(job.progress());
///     ReadOutcome outcome = job.take();
///
/// A reader that crashes, hangs, or wants more memory than there is, is a reason in the outcome. Not for two threads.
class ReadJob
{
public:
    /// Begins.
    ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits = {});

    /// Cancels, unless it is done.
    ~ReadJob();

    ReadJob(const ReadJob&) = delete;
    ReadJob& operator=(const ReadJob&) = delete;

    /// Has a function called, on another thread, as soon as the job is done; at once if it is.
    void whenDone(std::function<void()> function);

    bool isDone() const;
    bool isCancelled() const;

    /// Waits that many milliseconds at most. @return isDone()
    bool wait(int milliseconds);

    /// @return how far it has come, from 0 to 1; less than 0 while that is not known
    double progress() const;

    /// Lets go of it: it is done at once, and the process that reads is ended.
    void cancel();

    /// @return what came of it, once; nothing but `isCancelled` when it was cancelled before it was done. To be called
    ///         when it is done
    ReadOutcome take();

    /// Waits for the threads of all jobs, cancelled ones as well, which takes some milliseconds. To be called at the end of
    /// main(): what they load while they work goes before anything that was there at the start.
    static void waitForThreads();

    const std::string& path() const { return m_path; }

private:
    struct Shared;
    static void work(const std::shared_ptr<Shared>& shared, ReadKind kind, const std::string& path,
                     const ReadLimits& limits);

    std::string m_path;
    std::shared_ptr<Shared> m_shared;
};

} // namespace vfViewer
