// SPDX-License-Identifier: MIT
// Work that is measured from outside, as whole processes.
#include "support/Programs.h"

#include <benchmark/benchmark.h>

#include <string>

#include <unistd.h>

using vfBenchmark::place;
using vfBenchmark::program;
using vfBenchmark::succeeds;

namespace {

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
