// SPDX-License-Identifier: MIT
#include "Process.h"

#include "TemporaryDirectory.h"

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfTest {

namespace {

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
    alarm(120);
    if (directory.empty() || chdir(directory.c_str()) == 0)
        execvp(pointers[0], pointers.data());
    _exit(127);
}

} // namespace

Outcome runProgram(const std::vector<std::string>& arguments, const std::string& directory)
{
    const TemporaryDirectory place;
    const pid_t child = fork();
    if (child == 0)
        become(arguments, directory, place.file("out"), place.file("err"));
    int status = 0;
    waitpid(child, &status, 0);
    Outcome outcome;
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    outcome.out = readFile(place.file("out"));
    outcome.err = readFile(place.file("err"));
    return outcome;
}

} // namespace vfTest
