// SPDX-License-Identifier: MIT
// The process from which the helper processes of a program come. It has one thread, reads no file, and ends with the program,
// and the helper processes with it. It is linked with little, so that it is there at once.
#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/internal/Descriptors.h>
#include <velaforge/isolation/internal/Protocol.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using vfIsolation::helperSocket;
using vfIsolation::HelperStarted;
using vfIsolation::LaunchRequest;

/// How long nothing must happen before a process is made for a task to come.
constexpr int quietMilliseconds = 100;

class Launcher
{
public:
    /// @param helper  a descriptor of the executable
    explicit Launcher(int helper) : m_helper(helper)
    {
        sigemptyset(&m_ended);
        sigaddset(&m_ended, SIGCHLD);
        sigprocmask(SIG_BLOCK, &m_ended, nullptr);
        m_children = signalfd(-1, &m_ended, SFD_CLOEXEC | SFD_NONBLOCK);
        fcntl(helperSocket, F_SETFD, FD_CLOEXEC);
        // What a helper process leaves behind becomes a child of this one.
        prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    }

    void run()
    {
        makeSpare();
        for (;;) {
            pollfd waited[] = {{helperSocket, POLLIN, 0}, {m_children, POLLIN, 0}};
            const int count = poll(waited, 2, m_spare == 0 && m_makesSpares ? quietMilliseconds : -1);
            if (count < 0 && errno != EINTR)
                break;
            reap();
            if (count == 0)
                makeSpare();
            if (waited[0].revents == 0)
                continue;
            LaunchRequest request;
            std::vector<int> files;
            if (!vfIsolation::receivePacket(helperSocket, &request, sizeof(request), files))
                break;
            if (files.size() == 1)
                start(files[0]);
            for (const int file : files)
                close(file);
        }
        for (const pid_t process : m_processes)
            kill(process, SIGKILL);
    }

private:
    /// Executes a process for the next task, so that it has its libraries when the task comes.
    void makeSpare()
    {
        int ours = -1;
        int theirs = -1;
        if (!vfIsolation::makeSocketPair(ours, theirs))
            return;
        const pid_t launcher = getpid();
        const pid_t process = fork();
        if (process == 0)
            become(theirs, launcher);
        close(theirs);
        if (process < 0) {
            close(ours);
            return;
        }
        m_spare = process;
        m_spareSocket = ours;
        m_processes.insert(process);
    }

    [[noreturn]] void become(int socket, pid_t launcher) const
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != launcher)
            _exit(EXIT_FAILURE); // which ended before the line above
        sigprocmask(SIG_UNBLOCK, &m_ended, nullptr);
        dup2(socket, helperSocket); // without FD_CLOEXEC, which all others have
        std::string name = "velaforge-helper";
        std::string argument = vfIsolation::serveArgument;
        char* arguments[] = {name.data(), argument.data(), nullptr};
        fexecve(m_helper, arguments, environ); // the same one, whatever took its place meanwhile
        _exit(EXIT_FAILURE);
    }

    /// Gives the spare process a task's socket, and the program a descriptor of the process. A process is not reaped before,
    /// so that the system cannot give its id to another one.
    void start(int socket)
    {
        HelperStarted started;
        int handle = -1;
        for (int tries = 0; tries < 3 && !started.isStarted; ++tries) {
            if (m_spare == 0)
                makeSpare();
            const pid_t process = std::exchange(m_spare, 0);
            const LaunchRequest request;
            const bool isSent = vfIsolation::sendPacket(m_spareSocket, &request, sizeof(request), {socket});
            vfIsolation::closeFile(m_spareSocket);
            if (!isSent)
                continue; // it was killed, or there is none
            // The number of the call, because the header is not one for C++.
            handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
            started.isStarted = handle >= 0;
            m_makesSpares = true;
            started.process = process;
        }
        if (started.isStarted)
            vfIsolation::sendPacket(socket, &started, sizeof(started), {handle});
        else
            vfIsolation::sendPacket(socket, &started, sizeof(started));
        vfIsolation::closeFile(handle);
    }

    void reap()
    {
        signalfd_siginfo told;
        bool hasEnded = false;
        while (read(m_children, &told, sizeof(told)) > 0)
            hasEnded = true;
        if (!hasEnded)
            return;
        for (pid_t process = 0; (process = waitpid(-1, nullptr, WNOHANG)) > 0;) {
            m_processes.erase(process);
            if (process == m_spare) {
                m_spare = 0;
                m_makesSpares = false; // a helper that cannot start would be executed again and again
                vfIsolation::closeFile(m_spareSocket);
            }
        }
        killOrphans();
    }

    /// Ends the processes that helper processes have left behind.
    void killOrphans() const
    {
        FILE* children = std::fopen("/proc/thread-self/children", "re");
        if (!children)
            return;
        for (int process = 0; std::fscanf(children, "%d", &process) == 1;) {
            if (m_processes.count(process) == 0)
                kill(process, SIGKILL);
        }
        std::fclose(children);
    }

    const int m_helper;
    sigset_t m_ended;
    int m_children = -1;
    pid_t m_spare = 0;
    int m_spareSocket = -1;
    bool m_makesSpares =
        true; ///< between tasks; not after a spare process has ended without one, until the next task
    std::set<pid_t> m_processes; ///< that were made here and not reaped
};

} // namespace

int main(int argc, char** argv)
{
    const int helper = argc == 2 ? open(argv[1], O_PATH | O_CLOEXEC) : -1;
    if (helper < 0)
        return EXIT_FAILURE; // started by hand, not by a program
    signal(SIGINT, SIG_IGN); // a key at the terminal is for the program
    signal(SIGPIPE, SIG_IGN);
    Launcher(helper).run();
    return EXIT_SUCCESS;
}
