// SPDX-License-Identifier: MIT
#include <velaforge/base/ChildProcess.h>

#include <cerrno>
#include <csignal>
#include <exception>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfBase {

namespace {

// Numbers that a process which ends itself is unlikely to give, so that it is not taken for one that was done.
constexpr int succeeded = 73;
constexpr int failed = 74;

/// Does the work and ends the process without any of its exit handlers.
[[noreturn]] void runAndExit(const std::function<bool()>& work, unsigned int seconds)
{
    for (const int number : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGALRM})
        std::signal(number, SIG_DFL);
    std::set_terminate([] { _exit(failed); });
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream < 3; ++stream)
        dup2(nowhere, stream);
    alarm(seconds);
    bool isDone = false;
    try {
        isDone = work();
    } catch (...) {
        isDone = false;
    }
    _exit(isDone ? succeeded : failed);
}

} // namespace

ChildResult tryInChild(const std::function<bool()>& work, unsigned int seconds)
{
    const pid_t child = fork();
    if (child < 0)
        return ChildResult::NotMade;
    if (child == 0)
        runAndExit(work, seconds);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return ChildResult::NotMade;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == succeeded)
        return ChildResult::Succeeded;
    if (WIFEXITED(status) && WEXITSTATUS(status) == failed)
        return ChildResult::Failed;
    return ChildResult::Died;
}

} // namespace vfBase
