// SPDX-License-Identifier: MIT
#include "reading/ReaderServer.h"

#include "model/GraphicsContexts.h"
#include "reading/FileGate.h"
#include "reading/ReadProgress.h"
#include "reading/ReaderProtocol.h"
#include "reading/SceneTransfer.h"

#include <velaforge/isolation/Packet.h>

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <exception>
#include <functional>
#include <new>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VFVIEWER_SANITIZED
#endif

namespace vfViewer {

namespace {

constexpr const char* lackOfMemory = "it needs more memory than there is";

void limitMemory(std::uint64_t memory)
{
#ifndef VFVIEWER_SANITIZED // which need far more room than memory
    const rlimit limit = {memory, memory};
    setrlimit(RLIMIT_AS, &limit);
#else
    (void)memory;
#endif
}

/// @return why the work could not be done; empty when it was
std::string guarded(const std::function<void()>& work)
{
    try {
        work();
        return std::string();
    } catch (const std::bad_alloc&) {
        return lackOfMemory;
    } catch (const std::exception& problem) {
        return problem.what();
    } catch (...) {
        return "its reader failed for an unknown reason";
    }
}

long long sendReason(int file, const std::string& reason)
{
    ReadOutcome outcome;
    outcome.reason = reason;
    return SceneSender(file).send(outcome, SceneSender::LargeArrays::InFile);
}

void read(const ReaderTasks& tasks, const ReaderRequest& request, const ReaderGo& go, int socket, int scene)
{
    ReadOutcome outcome;
    const std::string problem = guarded([&] {
        const auto task = request.kind == ReadKind::Image ? tasks.readImage : tasks.readModel;
        outcome = task(request.path);
    });
    if (!problem.empty()) {
        outcome = ReadOutcome();
        outcome.reason = problem;
    }
    ReadProgress::tell(ReadProgress::Sending);
    SceneSender sender(scene);
    ReaderDone done;
    guarded([&] {
        done.size = sender.send(outcome,
                                go.isReadable ? SceneSender::LargeArrays::InThisProcess
                                              : SceneSender::LargeArrays::InFile,
                                SceneSharing::None);
    });
    if (done.size == 0) {
        outcome = ReadOutcome(); // whose memory may be what is lacking
        done.size = sendReason(scene, lackOfMemory);
    }
    vfIsolation::sendPacket(socket, &done, sizeof(done));
    // The program reads the memory of this process until it closes the socket.
    char said = 0;
    vfIsolation::receivePacket(socket, &said, sizeof(said));
}

void write(const ReaderTasks& tasks, const ReaderRequest& request, int socket, int scene)
{
    std::string reason;
    const std::string problem = guarded([&] {
        const std::atomic<bool> stop{false};
        const ReadOutcome outcome = receiveScene(scene, request.sceneSize, {}, stop);
        ReadProgress::tell(ReadProgress::Writing);
        reason = outcome.scene ? tasks.write(*outcome.scene, request.path) : outcome.reason;
    });
    if (!problem.empty())
        reason = problem;
    ReaderDone done;
    done.size = reason.empty();
    reason.copy(done.reason, sizeof(done.reason) - 1);
    vfIsolation::sendPacket(socket, &done, sizeof(done));
}

/// The process that does one task.
[[noreturn]] void becomeReader(const ReaderTasks& tasks, const ReaderRequest& request, pid_t launcher,
                               const std::vector<int>& files)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != launcher)
        _exit(1); // it ended before the line above
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    const int socket = files[0];
    const int scene = files[1];
    ReaderGo go;
    if (!vfIsolation::receivePacket(socket, &go, sizeof(go)))
        _exit(1);
    limitMemory(request.memory);
    ReadProgress::share(files[2]);
    if (request.kind == ReadKind::Write)
        write(tasks, request, socket, scene);
    else
        read(tasks, request, go, socket, scene);
    _exit(0);
}

/// What the launcher waits for.
struct Awaited
{
    pollfd request;  ///< of the program, on the socket
    pollfd children; ///< the signal that one has ended
};

/// Has SIGCHLD read from a descriptor rather than handled at any moment.
int childrenDescriptor(int how)
{
    sigset_t ended;
    sigemptyset(&ended);
    sigaddset(&ended, SIGCHLD);
    sigprocmask(how, &ended, nullptr);
    return how == SIG_BLOCK ? signalfd(-1, &ended, SFD_CLOEXEC | SFD_NONBLOCK) : -1;
}

/// Lets go of the processes that have ended.
void reapReaders(int children)
{
    signalfd_siginfo told;
    while (::read(children, &told, sizeof(told)) > 0) {
    }
    while (waitpid(-1, nullptr, WNOHANG) > 0) {
    }
}

/// Makes a reader process and sends its id to the program. The process is not reaped before the program has opened a
/// descriptor of it, so that the system cannot give its id to another process.
void answer(const ReaderTasks& tasks, const Awaited& awaited, const ReaderRequest& request,
            const std::vector<int>& files)
{
    const pid_t launcher = getpid();
    const pid_t process = fork();
    if (process == 0) {
        childrenDescriptor(SIG_UNBLOCK);
        close(awaited.request.fd);
        close(awaited.children.fd);
        becomeReader(tasks, request, launcher, files);
    }
    // The number of the call, because the header is not one for C++.
    const int handle = process > 0 ? static_cast<int>(syscall(SYS_pidfd_open, process, 0)) : -1;
    if (handle >= 0) {
        ReaderStarted started;
        started.process = process;
        started.probe = memoryProbe();
        vfIsolation::sendPacket(files[0], &started, sizeof(started), {handle});
        close(handle);
    }
}

/// Loads what reads a format, so that it need not be loaded for the next file of its kind.
void loadReader(const std::string& path)
{
    if (FileGate::isModel(path) || FileGate::isImage(path))
        osgDB::Registry::instance()->getReaderWriterForExtension(osgDB::getLowerCaseFileExtension(path));
}

} // namespace

void serveReaders(int socket, const ReaderTasks& tasks)
{
    prctl(PR_SET_NAME, "vfviewer-reader");
    signal(SIGINT, SIG_IGN); // a key at the terminal is for the program
    signal(SIGPIPE, SIG_IGN);
    // A write beyond a limit of the size of files fails; its signal would end the process without a word.
    signal(SIGXFSZ, SIG_IGN);
    FileGate::install();
    expectFewGraphicsContexts();
    ReaderRequest request;
    std::vector<int> files;
    const Awaited awaited = {{socket, POLLIN, 0}, {childrenDescriptor(SIG_BLOCK), POLLIN, 0}};
    for (;;) {
        pollfd both[] = {awaited.request, awaited.children};
        if (poll(both, 2, -1) < 0 && errno != EINTR)
            break;
        reapReaders(awaited.children.fd);
        if (both[0].revents == 0)
            continue;
        if (!vfIsolation::receivePacket(socket, &request, sizeof(request), files))
            break;
        request.path[sizeof(request.path) - 1] = 0;
        if (files.size() == 3)
            answer(tasks, awaited, request, files);
        for (const int file : files)
            close(file);
        loadReader(request.path);
    }
    _exit(0);
}

} // namespace vfViewer
