// SPDX-License-Identifier: MIT
#include "model/ReaderProbe.h"

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfViewer {

namespace {

constexpr unsigned int secondsAllowed = 120;
constexpr int refused = 1;

bool isProbed(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension == "osgb" || extension == "ive";
}

/// Reads, and ends the process.
[[noreturn]] void readInChild(const std::string& path)
{
    for (const int number : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGALRM})
        std::signal(number, SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    const int nowhere = open("/dev/null", O_RDWR);
    for (int stream = 0; stream < 3; ++stream)
        dup2(nowhere, stream);
    alarm(secondsAllowed);
    try {
        _exit(osgDB::Registry::instance()->readNode(path, nullptr).validNode() ? EXIT_SUCCESS : refused);
    } catch (...) {
        _exit(refused);
    }
}

} // namespace

ProbeResult probeReading(const std::string& path)
{
    if (!isProbed(path))
        return ProbeResult::NotNeeded;
    const pid_t child = fork();
    if (child < 0)
        return ProbeResult::NotNeeded;
    if (child == 0)
        readInChild(path);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return ProbeResult::NotNeeded;
    }
    if (!WIFEXITED(status))
        return ProbeResult::Crashed;
    return WEXITSTATUS(status) == EXIT_SUCCESS ? ProbeResult::Read : ProbeResult::Refused;
}

} // namespace vfViewer
