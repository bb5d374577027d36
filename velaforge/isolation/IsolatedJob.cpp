// SPDX-License-Identifier: MIT
#include <velaforge/isolation/IsolatedJob.h>

#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/SharedMemory.h>
#include <velaforge/isolation/internal/Descriptors.h>
#include <velaforge/isolation/internal/Launcher.h>
#include <velaforge/isolation/internal/Protocol.h>

#include <velaforge/base/Printable.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <utility>

#include <poll.h>
#include <sys/mman.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int millisecondsBetweenLooks = 50;

constexpr const char* takesTooLong = "it takes too long";

IsolatedResult failure(IsolationError error, const std::string& reason)
{
    IsolatedResult result;
    result.error = error;
    result.reason = vfBase::printable(vfBase::VfString(reason)).str();
    return result;
}

IsolatedResult lackOfMemory()
{
    return failure(IsolationError::OutOfMemory, "there is not enough memory");
}

/// A file in memory, which the destructor closes.
class SharedFile
{
public:
    explicit SharedFile(const char* name) : m_file(makeSharedMemory(name)) {}
    ~SharedFile() { closeFile(m_file); }
    SharedFile(const SharedFile&) = delete;
    SharedFile& operator=(const SharedFile&) = delete;

    operator int() const { return m_file; }

    /// Writes the contents and seals them. @return false on failure
    bool put(const std::string& contents)
    {
        return m_file >= 0 && writeAll(m_file, contents.data(), contents.size()) && sealContents(m_file);
    }

private:
    int m_file;
};

/// The progress of a task, in memory that its process writes.
class Progress
{
public:
    Progress() : m_file("progress")
    {
        if (m_file < 0 || ftruncate(m_file, progressSize) != 0 || !sealSize(m_file))
            return;
        void* page = mmap(nullptr, progressSize, PROT_READ, MAP_SHARED, m_file, 0);
        m_told = page == MAP_FAILED ? nullptr : static_cast<const TaskProgress*>(page);
    }
    ~Progress()
    {
        if (m_told)
            munmap(const_cast<TaskProgress*>(m_told), progressSize);
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    int file() const { return m_file; }
    bool isThere() const { return m_told; }
    bool isBegun() const { return m_told->isBegun != 0; }

    void update(JobControl& control, std::atomic<std::uint32_t>* stage) const
    {
        control.progress = static_cast<float>(std::min(m_told->millionths.load(), 1000000u)) / 1e6f;
        if (stage)
            *stage = m_told->stage.load();
    }

private:
    SharedFile m_file;
    const TaskProgress* m_told = nullptr;
};

enum class Waited
{
    Answered,
    Ended,
    Cancelled,
    TooLong
};

/// Waits for an answer, the end of the process, the end of the time, or Cancel, whichever comes first.
Waited waitForAnswer(JobControl& control, const HelperProcess& process, const Progress& progress,
                     std::atomic<std::uint32_t>* stage, Clock::time_point end)
{
    for (;;) {
        pollfd waited[] = {
            {process.socket, POLLIN, 0}, {process.handle, POLLIN, 0}, {control.wakeUp(), POLLIN, 0}};
        poll(waited, 3, millisecondsBetweenLooks);
        progress.update(control, stage);
        if (control.isCancelled)
            return Waited::Cancelled;
        // It may have answered and ended after its socket was looked at.
        if (waited[0].revents == 0 && waited[1].revents != 0)
            poll(waited, 1, 0);
        if (waited[0].revents & POLLIN)
            return Waited::Answered;
        if (waited[0].revents != 0 || waited[1].revents != 0)
            return Waited::Ended;
        if (Clock::now() >= end)
            return Waited::TooLong;
    }
}

std::string cannotStart(const std::string& helper)
{
    return "the helper program " + helper + " cannot be started";
}

IsolatedResult describe(const TaskDone& done, int resultFile)
{
    switch (done.outcome) {
    case TaskOutcome::Done: {
        IsolatedResult result;
        result.bytes = SharedBytes(resultFile, done.size);
        if (done.size > 0 && result.bytes.isEmpty())
            return failure(IsolationError::Ended, "its process sent a result that is not sealed");
        return result;
    }
    case TaskOutcome::Failed:
        return failure(IsolationError::Failed, done.reason[0] ? done.reason : "it failed without a reason");
    case TaskOutcome::OutOfMemory:
        return failure(IsolationError::OutOfMemory, "it needs more memory than it may use");
    case TaskOutcome::TooLong:
        return failure(IsolationError::TooLong, takesTooLong);
    case TaskOutcome::NoSuchTask:
        return failure(IsolationError::NotStarted, "the helper program does not know this task");
    case TaskOutcome::OtherBuild:
        return failure(IsolationError::NotStarted, "the helper program is of another version");
    case TaskOutcome::NoSandbox:
        return failure(IsolationError::NotStarted,
                       std::string("the sandbox is not complete: ") + done.reason);
    }
    return failure(IsolationError::Ended, "its process sent nonsense");
}

std::string joined(const std::vector<std::string>& names)
{
    std::string all;
    for (const std::string& name : names)
        all.append(name.c_str(), name.size() + 1);
    return all;
}

/// What a task needs besides a process.
struct Prepared
{
    explicit Prepared(const IsolatedTask& task)
        : names("names"),
          argument("argument"),
          result("result"),
          end(Clock::now() + std::chrono::seconds(task.limits.clockSeconds))
    {
        const std::string readable = joined(task.readableFiles);
        isKnown =
            putText(request.build, buildId()) && putText(request.task, task.name) && task.files.size() <= 4;
        isThere = names.put(readable) && argument.put(task.argument) && result >= 0 && progress.isThere();
        request.namesSize = readable.size();
        request.argumentSize = task.argument.size();
        request.memory = task.limits.memory;
        request.resultSize = task.limits.resultSize;
        request.seconds = task.limits.seconds;
        request.files = task.limits.files;
        request.layers = static_cast<std::uint8_t>(task.layers);
        request.requiresSandbox = task.requiresSandbox;
        takesMemory = task.takesMemory;
        files = {names, argument, result, progress.file()};
        files.insert(files.end(), task.files.begin(), task.files.end());
    }

    TaskRequest request;
    SharedFile names;
    SharedFile argument;
    const SharedFile result;
    const Progress progress;
    std::vector<int> files; ///< in the order of TaskFile
    const Clock::time_point end;
    bool isKnown = false; ///< its name is one that a task can have
    bool isThere = false; ///< there was memory for all of it
    bool takesMemory = false;
};

IsolatedResult runOnce(JobControl& control, const std::string& helper, const Prepared& prepared,
                       std::atomic<std::uint32_t>* stage)
{
    const auto process = std::make_shared<HelperProcess>();
    switch (Launcher::of(helper).launch(control, *process, prepared.end)) {
    case LaunchResult::Started:
        break;
    case LaunchResult::Cancelled:
        return failure(IsolationError::Cancelled, "it was cancelled");
    case LaunchResult::Impossible:
        return lackOfMemory();
    case LaunchResult::TooLong:
        return failure(IsolationError::TooLong, "the helper program does not answer");
    case LaunchResult::NoHelper:
        return failure(IsolationError::NotStarted, cannotStart(helper));
    }
    // That the process has ended is noticed below.
    TaskRequest request = prepared.request;
    request.isMemoryReadable = prepared.takesMemory && process->isMemoryReadable();
    sendPacket(process->socket, &request, sizeof(request), prepared.files);
    switch (waitForAnswer(control, *process, prepared.progress, stage, prepared.end)) {
    case Waited::Answered:
        break;
    case Waited::Cancelled:
        return failure(IsolationError::Cancelled, "it was cancelled");
    case Waited::TooLong:
        return failure(IsolationError::TooLong, takesTooLong);
    case Waited::Ended:
        return failure(IsolationError::Ended, "its process ended unexpectedly");
    }
    TaskDone done;
    if (!receivePacket(process->socket, &done, sizeof(done)))
        return failure(IsolationError::Ended, "its process ended unexpectedly");
    done.reason[sizeof(done.reason) - 1] = 0;
    done.missing[sizeof(done.missing) - 1] = 0;
    IsolatedResult result = describe(done, prepared.result);
    result.missingDefences = vfBase::printable(vfBase::VfString(done.missing)).str();
    if (result.error == IsolationError::None && done.lendsMemory && request.isMemoryReadable)
        result.memory = std::make_shared<LentMemory>(process);
    return result;
}

IsolatedResult run(JobControl& control, const IsolatedTask& task, std::atomic<std::uint32_t>* stage)
{
    const Prepared prepared(task);
    if (!prepared.isKnown)
        return failure(IsolationError::NotStarted, "the helper program does not know this task");
    if (!prepared.isThere)
        return lackOfMemory();
    IsolatedResult result;
    // A process that was killed before it had the task costs nothing but another one.
    for (int tries = 0; tries < 3; ++tries) {
        result = runOnce(control, task.helper, prepared, stage);
        if (result.error != IsolationError::Ended || prepared.progress.isBegun())
            break;
    }
    if (result.error == IsolationError::Ended && !prepared.progress.isBegun())
        return failure(IsolationError::NotStarted, cannotStart(task.helper));
    return result;
}

} // namespace

void prepareHelper(const std::string& helper)
{
    Launcher::of(helper).start();
}

IsolatedResult runIsolated(JobControl& control, const IsolatedTask& task, std::atomic<std::uint32_t>* stage)
{
    try {
        return run(control, task, stage);
    } catch (const std::bad_alloc&) {
        return lackOfMemory();
    } catch (const std::exception& problem) {
        return failure(IsolationError::NotStarted, problem.what());
    }
}

IsolatedJob::IsolatedJob(const IsolatedTask& task)
    : Job(task.name), m_result(std::make_shared<IsolatedResult>(lackOfMemory()))
{
    prepareHelper(task.helper);
    start([result = m_result, task](JobControl& control) { *result = runIsolated(control, task); });
}

IsolatedResult IsolatedJob::take()
{
    if (isCancelled())
        return failure(IsolationError::Cancelled, "it was cancelled");
    return std::exchange(*m_result, IsolatedResult());
}

} // namespace vfIsolation
