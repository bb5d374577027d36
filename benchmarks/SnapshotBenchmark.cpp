// SPDX-License-Identifier: MIT
// Pictures of models, each by a whole process, beside another viewer's.
#include "support/LargeModels.h"
#include "support/Programs.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using vfBenchmark::place;
using vfBenchmark::succeeds;

namespace {

constexpr std::uint32_t large = 1000000;
constexpr std::uint32_t small = 100;

std::string model(const std::string& name)
{
    std::string path = place().file(name);
    if (access(path.c_str(), R_OK) == 0)
        return path;
    if (name == "large.obj")
        vfTest::writeHillsAsObj(path, large);
    else
        vfTest::writeHills(path, name == "large.stl" ? large : small);
    return path;
}

/// Has the system forget what it has read of a file.
void forget(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return;
    fdatasync(file);
    posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    close(file);
}

void snapshot(benchmark::State& state, const std::string& name, bool isOurs, bool isForgotten)
{
    const std::string path = model(name);
    const std::string picture = place().file("picture.png");
    const std::vector<std::string> ours = {
        vfBenchmark::program("vfviewer"), "--headless", "--size", "1280x800", "--snapshot", picture, path};
    const std::vector<std::string> theirs = {"/usr/bin/f3d", path, "--output=" + picture,
                                             "--resolution=1280,800"};
    for (auto _ : state) {
        if (isForgotten) {
            state.PauseTiming();
            forget(path);
            state.ResumeTiming();
        }
        if (!succeeds(isOurs ? ours : theirs))
            state.SkipWithError("there is no picture");
    }
}

void add(const std::string& work, const std::string& name, bool isForgotten)
{
    for (const bool isOurs : {true, false})
        benchmark::RegisterBenchmark((work + (isOurs ? "/ours" : "/f3d")).c_str(), snapshot, name, isOurs,
                                     isForgotten)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    add("large stl", "large.stl", false);
    add("large obj", "large.obj", false);
    add("small stl", "small.stl", false);
    add("large stl forgotten", "large.stl", true);
    add("large obj forgotten", "large.obj", true);
    place();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
