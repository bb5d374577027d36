// SPDX-License-Identifier: MIT
// Work that is measured from outside, as whole processes.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

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

const Place& place()
{
    static const Place made;
    return made;
}

/// @return whether the program ended with status 0
bool succeeds(std::vector<std::string> arguments)
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

std::string program(const std::string& name)
{
    return VELAFORGE_PROGRAM_DIR "/" + name;
}

void settings(benchmark::State& state, const std::string& name)
{
    const std::string file = place().file(name);
    for (auto _ : state) {
        if (!succeeds({program(name), "save", file}) || !succeeds({program(name), "load", file}))
            state.SkipWithError("the records did not come back");
        state.PauseTiming();
        for (const char* kind : {"", ".previous"})
            unlink((file + kind).c_str());
        state.ResumeTiming();
    }
}

void start(benchmark::State& state, const std::string& name)
{
    for (auto _ : state) {
        if (!succeeds({program(name)}))
            state.SkipWithError("the program failed");
    }
}

void add(const char* label, void (*run)(benchmark::State&, const std::string&), const char* name)
{
    benchmark::RegisterBenchmark(label, run, name)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    add("settings/ours", settings, "settings_ours");
    add("settings/QSettings", settings, "settings_qt");
    add("start/ours", start, "start_ours");
    add("start/QCoreApplication", start, "start_qt");
    add("start/OpenSceneGraph", start, "start_openscenegraph");
#ifdef VELAFORGE_WITH_QT
    add("window/ours", start, "window_ours");
    add("window/Qt window", start, "window_qt");
#endif
    place();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
