// SPDX-License-Identifier: MIT
#include <velaforge/base/ChildProcess.h>

#include <velaforge/base/PosixFiles.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <exception>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfBase {

namespace {

using Clock = std::chrono::steady_clock;

constexpr char go = 'g';
constexpr char succeeded = 's';
constexpr char failed = 'f';

int resultChannel = -1; // set in the child process only

[[noreturn]] void finish(char result)
{
    (void)!send(resultChannel, &result, 1, MSG_NOSIGNAL);
    _exit(0);
}

void redirectStandardStreams()
{
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream < 3; ++stream) {
        if (nowhere < 0)
            close(stream);
        else
            dup2(nowhere, stream);
    }
    if (nowhere > 2)
        close(nowhere);
}

/// The main function of the child process: waits until the parent watches it, does the work, sends the
/// result.
[[noreturn]] void runAndExit(const std::function<bool()>& work, int channel, pid_t parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(0); // the parent ended before the call above
    for (const int number : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL})
        std::signal(number, SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    resultChannel =
        fcntl(channel, F_DUPFD_CLOEXEC, 3); // the standard streams may be closed and their numbers in use
    redirectStandardStreams();
    char answer = 0;
    while (read(resultChannel, &answer, 1) < 0 && errno == EINTR) {
    }
    if (answer != go)
        _exit(0);
    std::set_terminate([] { finish(failed); });
    bool isDone = false;
    try {
        isDone = work();
    } catch (...) {
        isDone = false;
    }
    finish(isDone ? succeeded : failed);
}

/// Waits until the descriptor has data to read or the time limit is reached.
void waitUntil(Clock::time_point deadline, int descriptor)
{
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0)
            return;
        pollfd watched{descriptor, POLLIN, 0};
        const int ready = poll(&watched, 1, static_cast<int>(std::min<long long>(left, INT_MAX)));
        if (ready > 0 || (ready < 0 && errno != EINTR))
            return;
    }
}

/// Kills the process group of the child process and waits for its end.
void end(pid_t child, int watch)
{
    // Until waitpid its number cannot belong to another process or group.
    siginfo_t info;
    const auto type = watch >= 0 ? P_PIDFD : P_PID;
    const auto id = static_cast<id_t>(watch >= 0 ? watch : child);
    info.si_pid = 0;
    if (waitid(type, id, &info, WEXITED | WNOHANG | WNOWAIT) != 0)
        return; // SIGCHLD is ignored, and the system has removed the process already
    kill(-child, SIGKILL);
    kill(child, SIGKILL);
    while (waitid(type, id, &info, WEXITED) != 0 && errno == EINTR) {
    }
}

} // namespace

ChildResult tryInChild(const std::function<bool()>& work, unsigned int seconds)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(std::max(seconds, 1u));
    int channel[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, channel) != 0)
        return ChildResult::NotMade;
    const posix::Descriptor ours(channel[0]);
    posix::Descriptor theirs(channel[1]);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        return ChildResult::NotMade;
    if (child == 0) {
        close(ours);
        runAndExit(work, theirs, parent);
    }
    theirs.close();

    // The child process waits for the first byte, so its number is valid until then. Watches the process
    // rather than the channel, which processes started by the work may keep open.
    setpgid(child, child);
    const posix::Descriptor watch(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    (void)!send(ours, &go, 1, MSG_NOSIGNAL);
    waitUntil(deadline, watch.isOpen() ? watch : ours);
    char result = 0;
    (void)!recv(ours, &result, 1, MSG_DONTWAIT);
    end(child, watch);
    if (result == succeeded)
        return ChildResult::Succeeded;
    return result == failed ? ChildResult::Failed : ChildResult::Died;
}

} // namespace vfBase
