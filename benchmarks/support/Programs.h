// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfBenchmark {

/// A directory for this run, with a home in it.
class Place
{
public:
    Place()
    {
        char name[] = "/tmp/velaforge-benchmark-XXXXXX";
        if (mkdtemp(name))
            m_path = name;
        setenv("HOME", m_path.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (m_path + "/config").c_str(), 1);
    }
    ~Place()
    {
        if (!m_path.empty() && std::system(("rm -r " + m_path).c_str()) != 0)
            std::perror("rm");
    }

    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    std::string file(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

inline const Place& place()
{
    static const Place made;
    return made;
}

/// @return whether the program ended with status 0
inline bool succeeds(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    return posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), environ) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

inline std::string program(const std::string& name)
{
    return VELAFORGE_PROGRAM_DIR "/" + name;
}

} // namespace vfBenchmark
