// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/TaskRunner.h>

#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/Sandbox.h>
#include <velaforge/isolation/SharedMemory.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <new>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VFISOLATION_SANITIZED
#endif

namespace vfIsolation {

namespace {

/// Lowers a limit, for good: one that the program has holds for its helpers, too.
void limit(__rlimit_resource_t resource, rlim_t value, rlim_t atMost)
{
    rlimit now = {};
    if (getrlimit(resource, &now) != 0)
        return;
    const rlimit lower = {std::min(value, now.rlim_cur), std::min(atMost, now.rlim_cur)};
    setrlimit(resource, &lower);
}

void limit(__rlimit_resource_t resource, rlim_t value)
{
    limit(resource, value, value);
}

void applyLimits(const TaskRequest& request)
{
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, request.resultSize);
    limit(RLIMIT_NOFILE, request.files);
#ifndef VFISOLATION_SANITIZED // which need far more room than memory
    limit(RLIMIT_AS, request.memory);
#endif
}

int socketOfTask = -1;

/// Tells the program that the limit of processor time is reached, from wherever the task is.
void tellTooLong(int)
{
    TaskDone done;
    done.outcome = TaskOutcome::TooLong;
    sendPacket(socketOfTask, &done, sizeof(done));
    _exit(EXIT_SUCCESS);
}

/// A task that does not hear the signal at the limit is killed a second later.
void limitWork(unsigned int seconds, int socket)
{
    socketOfTask = socket;
    signal(SIGXCPU, tellTooLong);
    limit(RLIMIT_CPU, seconds, rlim_t(seconds) + 1);
}

/// Returns the contents of a file in memory that the program has sealed; null if there are none.
const char* mapSealed(int file, std::uint64_t size)
{
    if (size == 0)
        return "";
    void* bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    return bytes == MAP_FAILED ? nullptr : static_cast<const char*>(bytes);
}

std::vector<std::string> readNames(int file, std::uint64_t size)
{
    std::vector<std::string> names;
    const char* at = mapSealed(file, size);
    const char* end = at ? at + size : at;
    while (at != end) {
        names.emplace_back(at);
        at += names.back().size() + 1;
    }
    return names;
}

/// Standard output and standard error lead nowhere: what a file makes a reader print is not for the user's terminal.
void silence()
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (nowhere < 0)
        return;
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
#ifndef VFISOLATION_SANITIZED // whose reports are wanted
    dup2(nowhere, STDERR_FILENO);
#endif
    close(nowhere);
}

std::uint64_t sizeOf(int file)
{
    struct stat status;
    return fstat(file, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

void fail(TaskDone& done, TaskOutcome outcome, const std::string& reason = std::string())
{
    done.outcome = outcome;
    putText(done.reason, reason.substr(0, sizeof(done.reason) - 1));
}

} // namespace

void TaskRunner::run()
{
    signal(SIGPIPE, SIG_IGN);
    signal(SIGXFSZ, SIG_IGN); // a write beyond the limit fails
    LaunchRequest launched;
    std::vector<int> files;
    if (!receivePacket(helperSocket, &launched, sizeof(launched), files) || files.size() != 1)
        _exit(EXIT_FAILURE);
    const int socket = files[0];
    close(helperSocket);
    TaskRequest request;
    if (!receivePacket(socket, &request, sizeof(request), files) || files.size() < FirstOwnFile)
        _exit(EXIT_FAILURE);
    limitWork(request.seconds, socket);
    TaskDone done;
    take(request, files, done);
    sendPacket(socket, &done, sizeof(done));
    if (done.lendsMemory) {
        char none = 0;
        receivePacket(socket, &none, sizeof(none)); // until the program closes it
    }
    _exit(EXIT_SUCCESS); // without the destructors of what a file may have damaged
}

void TaskRunner::take(const TaskRequest& request, const std::vector<int>& files, TaskDone& done)
{
    if (request.build != buildId())
        return fail(done, TaskOutcome::OtherBuild);
    const auto found = m_helper.m_tasks.find(request.task);
    if (found == m_helper.m_tasks.end())
        return fail(done, TaskOutcome::NoSuchTask);
    const std::vector<std::string> names = readNames(files[NamesFile], request.namesSize);
    const char* argument = mapSealed(files[ArgumentFile], request.argumentSize);
    void* progress = mmap(nullptr, progressSize, PROT_READ | PROT_WRITE, MAP_SHARED, files[ProgressFile], 0);
    if (!argument || progress == MAP_FAILED)
        return fail(done, TaskOutcome::OutOfMemory);
    m_context.m_argument = {argument, request.argumentSize};
    m_context.m_progress = new (progress) TaskProgress;
    m_context.m_progress->isBegun = 1;
    m_context.m_result = files[ResultFile];
    m_context.m_canLendMemory = request.isMemoryReadable;
    m_context.m_files.assign(files.begin() + FirstOwnFile, files.end());
    for (const int file : {files[NamesFile], files[ArgumentFile], files[ProgressFile]})
        close(file);
    prctl(PR_SET_NAME, request.task);
    if (found->second.prepare)
        found->second.prepare(m_context.argument());
    silence();
    applyLimits(request);
    const SandboxState state = enterSandbox(names, static_cast<SandboxLayers>(request.layers));
    putText(done.missing, state.describe());
    if (request.requiresSandbox && !state.isComplete())
        return fail(done, TaskOutcome::NoSandbox, state.describe());
    work(found->second, done);
}

void TaskRunner::work(const Helper::Entry& entry, TaskDone& done)
{
    try {
        const std::string reason = entry.task(m_context);
        if (!reason.empty())
            return fail(done, TaskOutcome::Failed, reason);
    } catch (const std::bad_alloc&) {
        return fail(done, TaskOutcome::OutOfMemory);
    } catch (const std::exception& problem) {
        return fail(done, TaskOutcome::Failed, problem.what());
    } catch (...) {
        return fail(done, TaskOutcome::Failed, "an unknown exception was thrown");
    }
    if (!sealContents(m_context.m_result))
        return fail(done, TaskOutcome::Failed, "the result is still in use");
    done.outcome = TaskOutcome::Done;
    done.lendsMemory = m_context.m_lendsMemory;
    done.size = sizeOf(m_context.m_result);
}

} // namespace vfIsolation
