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

bool isProbed(const std::string& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension == "osgb" || extension == "ive";
}

/// Reads, and ends the process: 0 whatever came of it, as long as it came to an end.
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
        osgDB::Registry::instance()->readNode(path, nullptr);
    } catch (...) { // the parent meets it too, and tells
    }
    _exit(EXIT_SUCCESS);
}

} // namespace

bool survivesReading(const std::string& path)
{
    if (!isProbed(path))
        return true;
    const pid_t child = fork();
    if (child < 0)
        return true;
    if (child == 0)
        readInChild(path);
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return true;
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

} // namespace vfViewer
