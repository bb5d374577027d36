// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/formats/ReadLimits.h>
#include <velaforge/formats/ReadOutcome.h>
#include <velaforge/isolation/Job.h>

#include <memory>
#include <string>

namespace vfFormats {

/// What is in a file.
enum class ReadKind
{
    Model,
    Image ///< read as a textured rectangle
};

/// Reads a model or an image and waits for it.
///
///     vfFormats::ReadOutcome outcome = vfFormats::readModel("boat.glb");
///     if (!outcome.scene)
///         std::cerr << outcome.reason << std::endl;
///
/// A process of its own that has access to nothing else parses the file, so that a damaged or hostile one costs a reason in
/// the outcome. Blocks the caller; see ReadJob for one that does not. May be called on any thread, and on several at once.
/// @param path    of a file whose extension is that of a listed format, see listFormats()
/// @param limits  of the process
/// @return the outcome; never throws
VFFORMATS_EXPORT ReadOutcome readModel(const std::string& path, const ReadLimits& limits = {});

/// Reads a file in a process of its own while the caller goes on.
///
///     vfFormats::ReadJob job(path);
///     while (!job.wait(100))
///         show(job.progress());
///     vfFormats::ReadOutcome outcome = job.take();
///
/// whenDone() and doneDescriptor() tell an event loop that the job is done. A process that crashes, does not end, sleeps, or
/// needs too much memory is a reason in the outcome. Use a job on one thread.
class VFFORMATS_EXPORT ReadJob : public vfIsolation::Job
{
public:
    /// Starts to read a file, as the kind that its extension names.
    /// @param path    of the file
    /// @param limits  of the process
    explicit ReadJob(const std::string& path, const ReadLimits& limits = {});

    /// Starts to read a file.
    /// @param kind    model or image
    /// @param path    of the file
    /// @param limits  of the process
    ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits = {});

    /// Moves the outcome out of the job; call it once, when the job is done.
    /// @return the outcome; only `isCancelled` is set when the job was cancelled before it was done
    ReadOutcome take();

private:
    std::shared_ptr<ReadOutcome> m_outcome; ///< written by the thread until the job is done
};

/// Makes all jobs that follow, readers and writers, use another helper executable than velaforge-reader: one with formats of
/// its own, see addReaderTasks(). Call it before the program has threads.
/// @param path  absolute path of the executable; it must be of the same build of the libraries
VFFORMATS_EXPORT void useReaderProgram(const std::string& path);

/// Makes all jobs that follow, readers and writers, fail on a system that lacks a part of the sandbox, such as Landlock,
/// instead of doing with the others; what is missing is in ReadOutcome::details otherwise. Call it before the program has
/// threads.
VFFORMATS_EXPORT void requireSandbox();

/// Starts the process that reads the first file ahead of time. Returns at once. Call it early in a program that will read.
VFFORMATS_EXPORT void prepareReading();

} // namespace vfFormats
