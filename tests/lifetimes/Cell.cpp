// SPDX-License-Identifier: MIT
#include "Cell.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfLife {

namespace {

/// Long enough for a machine that does other work: it ends what hangs.
constexpr int millisecondsToLive = 120000;

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "cannot play a cell: %s: %s\n", what, std::strerror(errno));
    std::exit(2);
}

} // namespace

Cell::Cell()
{
    if (pipe2(m_ends, O_CLOEXEC) != 0)
        fail("pipe2");
    m_child = fork();
    if (m_child < 0)
        fail("fork");
    if (m_child > 0) {
        close(m_ends[1]);
        return;
    }
    close(m_ends[0]);
    setenv("HOME", m_home.path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", m_home.path().c_str(), 1);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    close(nowhere);
}

Cell::~Cell()
{
    if (m_child > 0)
        close(m_ends[0]);
}

void Cell::tell(const std::string& outcome, bool checksLeaks) const
{
    if (write(m_ends[1], outcome.data(), outcome.size()) != static_cast<ssize_t>(outcome.size()))
        _exit(99);
    if (!checksLeaks)
        _exit(0);
    std::exit(0);
}

std::string Cell::outcome()
{
    std::string text;
    pollfd readable{m_ends[0], POLLIN, 0};
    bool isLate = false;
    for (char buffer[256];;) {
        isLate = poll(&readable, 1, millisecondsToLive) == 0;
        const ssize_t size = isLate ? 0 : read(m_ends[0], buffer, sizeof(buffer));
        if (size <= 0)
            break;
        text.append(buffer, static_cast<std::size_t>(size));
    }
    if (isLate)
        kill(m_child, SIGKILL);
    int status = 0;
    waitpid(m_child, &status, 0);
    if (isLate)
        return "hangs";
    if (WIFSIGNALED(status))
        return "ended by signal " + std::to_string(WTERMSIG(status)) + " after: " + text;
    if (WEXITSTATUS(status) != 0)
        return "exit status " + std::to_string(WEXITSTATUS(status)) + " after: " + text;
    return text;
}

std::string documentedRow(const std::string& name)
{
    std::istringstream document(vfTest::readFile(VELAFORGE_SOURCE_DIR "/docs/lifecycle.md"));
    const std::string begin = "| " + name + " |";
    for (std::string line; std::getline(document, line);) {
        if (line.compare(0, begin.size(), begin) == 0)
            return line;
    }
    return "";
}

std::string testName(const std::string& hook)
{
    std::string name = hook;
    name.erase(
        std::remove_if(name.begin(), name.end(),
                       [](char c) { return !std::isalnum(static_cast<unsigned char>(c)) && c != '~'; }),
        name.end());
    std::replace(name.begin(), name.end(), '~', 'D');
    return name;
}

} // namespace vfLife
