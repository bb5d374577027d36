// SPDX-License-Identifier: MIT
// What it costs to read a file in a process of its own.
#include "reading/FileGate.h"
#include "reading/ModelReader.h"
#include "reading/ReadJob.h"
#include "reading/ReaderHost.h"
#include "support/LargeModels.h"
#include "support/Programs.h"

#include <osgDB/ReadFile>

#include <benchmark/benchmark.h>

#include <string>

using vfBenchmark::place;

namespace {

constexpr std::uint32_t triangles = 1000000;

/// With all that a view needs before it can show the model.
void apart(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        vfViewer::ReadJob job(vfViewer::ReadKind::Model, path);
        while (!job.wait(1000)) {
        }
        if (!job.take().scene)
            state.SkipWithError("the model was not read");
    }
}

void here(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        const vfViewer::ReadOutcome outcome = vfViewer::readModel(path);
        if (!outcome.scene)
            state.SkipWithError("the model was not read");
        else
            outcome.scene->getBound();
    }
}

/// As programs do that trust their files, without the strips of triangles that take far longer than all the rest.
void plainly(benchmark::State& state, const std::string& path)
{
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("noTriStripPolygons");
    for (auto _ : state) {
        const osg::ref_ptr<osg::Node> scene = osgDB::readRefNodeFile(path, options);
        if (!scene)
            state.SkipWithError("the model was not read");
        else
            scene->getBound();
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    vfViewer::ReaderHost::start();
    vfViewer::FileGate::install();
    const std::string stl = place().file("hills.stl");
    const std::string obj = place().file("hills.obj");
    vfTest::writeHills(stl, triangles);
    vfTest::writeHillsAsObj(obj, triangles);
    for (const std::string& path : {stl, obj}) {
        const std::string kind = path.substr(path.size() - 3);
        benchmark::RegisterBenchmark((kind + "/ours").c_str(), apart, path)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
        benchmark::RegisterBenchmark((kind + "/in this process").c_str(), here, path)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    }
    benchmark::RegisterBenchmark("stl/readRefNodeFile", plainly, stl)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
