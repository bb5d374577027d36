// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <velaforge/formats/ReadLimits.h>
#include <velaforge/formats/ReadOutcome.h>

#include <velaforge/isolation/Job.h>

#include <memory>
#include <string>

namespace vfFormats {

enum class ReadKind
{
    Model,
    Image
};

/// Makes ready what the first file needs, so that it need not wait for it. Returns at once.
VFFORMATS_EXPORT void prepareReading();

/// Reads a file in a process of its own, while this one goes on.
///
///     ReadJob job(ReadKind::Model, path);
///     while (!job.wait(100))
///         show(job.progress());
///     ReadOutcome outcome = job.take();
///
/// A reader that crashes, hangs, sleeps, or wants more memory than there is, is a reason in the outcome.
class VFFORMATS_EXPORT ReadJob : public vfIsolation::Job
{
public:
    /// Begins.
    ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits = {});

    /// @return what came of it, once; nothing but `isCancelled` when it was cancelled before it was done. To be called
    ///         when it is done
    ReadOutcome take();

private:
    std::shared_ptr<ReadOutcome> m_outcome; ///< the thread's until the job is done
};

/// Reads a file in a process of its own and waits for it: what the thread of a ReadJob does.
VFFORMATS_EXPORT ReadOutcome readInProcess(vfIsolation::JobControl& control, ReadKind kind,
                                           const std::string& path, const ReadLimits& limits = {});

} // namespace vfFormats
