// SPDX-License-Identifier: MIT
#include "Process.h"

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfTest {

namespace {

constexpr unsigned int secondsAllowed = 600; // ends what hangs; a slow machine needs far less

[[noreturn]] void become(const std::vector<std::string>& arguments, const std::string& directory,
                         const std::string& out, const std::string& err)
{
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    dup2(open("/dev/null", O_RDONLY), 0);
    dup2(open(out.c_str(), O_WRONLY | O_CREAT, 0600), 1);
    dup2(open(err.c_str(), O_WRONLY | O_CREAT, 0600), 2);
    alarm(secondsAllowed);
    if (directory.empty() || chdir(directory.c_str()) == 0)
        execvp(pointers[0], pointers.data());
    _exit(127);
}

} // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& arguments, const std::string& directory)
    : m_process(fork())
{
    if (m_process == 0)
        become(arguments, directory, m_place.file("out"), m_place.file("err"));
}

RunningProgram::~RunningProgram()
{
    if (m_isOver)
        return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

bool RunningProgram::isOverWithin(int milliseconds)
{
    for (int waited = 0; !m_isOver; waited += 10) {
        m_isOver = waitpid(m_process, &m_status, WNOHANG) == m_process;
        if (waited >= milliseconds)
            break;
        if (!m_isOver)
            usleep(10000);
    }
    return m_isOver;
}

Outcome RunningProgram::wait()
{
    if (!m_isOver)
        waitpid(m_process, &m_status, 0);
    m_isOver = true;
    Outcome outcome;
    outcome.status = WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -WTERMSIG(m_status);
    outcome.out = readFile(m_place.file("out"));
    outcome.err = readFile(m_place.file("err"));
    return outcome;
}

void RunningProgram::terminate() const
{
    kill(m_process, SIGTERM);
}

Outcome runProgram(const std::vector<std::string>& arguments, const std::string& directory)
{
    return RunningProgram(arguments, directory).wait();
}

} // namespace vfTest
