// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Job.h>
#include <velaforge/isolation/LentMemory.h>
#include <velaforge/isolation/Limits.h>
#include <velaforge/isolation/Sandbox.h>
#include <velaforge/isolation/SharedBytes.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vfIsolation {

/// A function of a helper executable and what it is given.
struct IsolatedTask
{
    std::string helper;   ///< absolute path of an executable whose main() is a Helper
    std::string name;     ///< of the task, at most 63 bytes
    std::string argument; ///< any bytes

    /// Absolute paths that the process can read besides @p files. It cannot read directories.
    std::vector<std::string> readableFiles;

    /// At most 4 descriptors that the process gets. They stay the caller's, open until the task is done.
    std::vector<int> files;

    Limits limits;                ///< of the process
    bool takesMemory = false;     ///< the task may lend its memory; see TaskContext::lendMemory()
    bool requiresSandbox = false; ///< fail where a part of the sandbox is missing
    SandboxLayers layers = SandboxLayers::All; ///< fewer only for tests
};

/// Why a task has no result.
enum class IsolationError : std::uint8_t
{
    None,
    Failed, ///< the task says why
    Cancelled,
    TooLong, ///< the limit of processor time or that of the clock
    OutOfMemory,
    Ended,     ///< the process crashed, was killed, or did not answer as it should
    NotStarted ///< the helper is missing or of another build, has no such task, or the sandbox is not complete
};

/// What came of a task.
struct IsolatedResult
{
    IsolationError error = IsolationError::None; ///< None if there is a result
    std::string reason; ///< one line without control characters; empty without an error
    SharedBytes bytes;  ///< the result; not validated

    /// Parts of the sandbox that this system does not have, "Landlock is not there", as far as the process got; empty for a
    /// complete sandbox. See IsolatedTask::requiresSandbox.
    std::string missingDefences;

    /// The memory of the process, if the task lends it. Let go of it when all is taken: the process stays as long.
    std::shared_ptr<const LentMemory> memory;
};

/// Starts the launcher of a helper, so that the first task need not wait for it. Returns at once.
VFISOLATION_EXPORT void prepareHelper(const std::string& helper);

/// Has a task done in a process of its own and waits for it.
/// @param control  to cancel it, and for its progress
/// @param task     what is done
/// @param stage    if not null, set to the number that the task has told; see TaskContext::tellStage()
VFISOLATION_EXPORT IsolatedResult runIsolated(JobControl& control, const IsolatedTask& task,
                                              std::atomic<std::uint32_t>* stage = nullptr);

/// Has a task done in a process of its own while this one goes on. A process that crashes, hangs, sleeps or exceeds its
/// limits is an error in the result.
///
///     vfIsolation::IsolatedJob job({helper, "count", path, {path}});
///     while (!job.wait(100))
///         show(job.progress());
///     vfIsolation::IsolatedResult result = job.take();
class VFISOLATION_EXPORT IsolatedJob : public Job
{
public:
    /// Begins the task.
    explicit IsolatedJob(const IsolatedTask& task);

    /// Returns the result, once; to be called when the job is done.
    IsolatedResult take();

private:
    std::shared_ptr<IsolatedResult> m_result; ///< the thread's until the job is done
};

} // namespace vfIsolation
