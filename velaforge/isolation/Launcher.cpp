// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/Launcher.h>

#include <velaforge/base/LibraryFolder.h>
#include <velaforge/isolation/IsolatedJob.h>
#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/internal/Descriptors.h>
#include <velaforge/isolation/internal/Protocol.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

using Clock = std::chrono::steady_clock;

/// A launcher that does not start a process within this time is replaced.
constexpr std::chrono::seconds patience{60};

/// Returns the environment of helpers: only that of sanitizers, which their own processes need, too.
std::vector<char*> environment()
{
    std::vector<char*> kept;
    for (char** one = environ; one && *one; ++one) {
        for (const char* name : {"ASAN_OPTIONS=", "UBSAN_OPTIONS=", "LSAN_OPTIONS=", "TSAN_OPTIONS="}) {
            if (!std::strncmp(*one, name, std::strlen(name)))
                kept.push_back(*one);
        }
    }
    kept.push_back(nullptr);
    return kept;
}

/// Executes the launcher, which inherits the socket and standard error. @return its id; negative on failure
pid_t spawn(const std::string& helper, int socket)
{
    const std::string program = vfBase::libraryFolder(&prepareHelper) + "/velaforge/velaforge-launcher";
    if (access(helper.c_str(), X_OK) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_adddup2(&actions, socket, helperSocket);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, helperSocket + 1);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    std::string name = "velaforge-launcher";
    std::string argument = helper;
    char* const arguments[] = {name.data(), argument.data(), nullptr};
    pid_t started = -1;
    if (posix_spawn(&started, program.c_str(), &actions, &attributes, arguments, environment().data()) != 0)
        started = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return started;
}

} // namespace

HelperProcess::~HelperProcess()
{
    if (handle >= 0)
        syscall(SYS_pidfd_send_signal, handle, SIGKILL, nullptr, 0);
    closeFile(socket);
    closeFile(handle);
}

bool HelperProcess::isMemoryReadable() const
{
    // Whether it is allowed is found out before whether there is anything at the address.
    char byte = 0;
    const iovec here = {&byte, 1};
    const iovec there = {nullptr, 1};
    return process_vm_readv(process, &here, 1, &there, 1, 0) >= 0 || errno == EFAULT;
}

Launcher& Launcher::of(const std::string& helper)
{
    // Never destroyed: threads may use them while the program ends.
    static std::mutex& mutex = *new std::mutex;
    static auto& launchers = *new std::map<std::string, std::unique_ptr<Launcher>>;
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<Launcher>& launcher = launchers[helper];
    if (!launcher)
        launcher.reset(new Launcher(helper));
    return *launcher;
}

Launcher::Launcher(std::string helper) : m_helper(std::move(helper)) {}

void Launcher::start()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_socket < 0)
        startLocked();
}

void Launcher::startLocked()
{
    int ours = -1;
    int theirs = -1;
    if (!makeSocketPair(ours, theirs))
        return;
    m_process = spawn(m_helper, theirs);
    close(theirs);
    if (m_process > 0)
        m_socket = ours;
    else
        close(ours);
    ++m_generation;
}

void Launcher::discardLocked()
{
    closeFile(m_socket);
    if (m_process <= 0)
        return;
    ::kill(m_process, SIGKILL);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
}

void Launcher::discard(unsigned int generation)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (generation == m_generation)
        discardLocked();
}

LaunchResult Launcher::launch(JobControl& control, HelperProcess& process, Clock::time_point end)
{
    for (int tries = 0; tries < 3; ++tries) {
        switch (ask(control, process, std::min(end, Clock::now() + patience))) {
        case Answer::Started:
            return LaunchResult::Started;
        case Answer::Cancelled:
            return LaunchResult::Cancelled;
        case Answer::TooLong:
            return LaunchResult::TooLong;
        case Answer::Impossible:
            return LaunchResult::Impossible;
        case Answer::LauncherLost:
            break; // it was killed, and the request with it; the next one gets it again
        }
    }
    return LaunchResult::NoHelper;
}

Launcher::Answer Launcher::ask(JobControl& control, HelperProcess& process, Clock::time_point end)
{
    closeFile(process.socket);
    int theirs = -1;
    if (!makeSocketPair(process.socket, theirs))
        return Answer::Impossible;
    unsigned int generation = 0;
    const Answer sent = send(control, theirs, generation, end);
    close(theirs);
    if (sent != Answer::Started)
        return sent;
    const SocketWait waited = waitForSocket(control, process.socket, POLLIN, end);
    if (waited == SocketWait::Cancelled)
        return Answer::Cancelled;
    HelperStarted started;
    std::vector<int> files;
    const bool isTold =
        waited == SocketWait::Ready && receivePacket(process.socket, &started, sizeof(started), files);
    if (isTold && started.isStarted && files.size() == 1) {
        process.handle = files[0];
        process.process = started.process;
        return Answer::Started;
    }
    for (const int file : files)
        close(file);
    if (isTold)
        return Answer::Impossible;
    discard(generation);
    return waited == SocketWait::TooLong ? Answer::TooLong : Answer::LauncherLost;
}

Launcher::Answer Launcher::send(JobControl& control, int theirs, unsigned int& generation,
                                Clock::time_point end)
{
    const LaunchRequest request;
    for (;;) {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_socket < 0)
                startLocked();
            if (m_socket < 0)
                return Answer::LauncherLost;
            generation = m_generation;
            if (sendPacket(m_socket, &request, sizeof(request), {theirs}))
                return Answer::Started;
            if (errno == EPIPE || errno == ECONNRESET) {
                discardLocked();
                return Answer::LauncherLost;
            }
        }
        // It has not taken the requests before this one: tries again after an interval.
        if (waitForSocket(control, -1, 0, Clock::now()) == SocketWait::Cancelled)
            return Answer::Cancelled;
        if (Clock::now() >= end) {
            discard(generation);
            return Answer::TooLong;
        }
    }
}

} // namespace vfIsolation
