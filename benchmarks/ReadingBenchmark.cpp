// SPDX-License-Identifier: MIT
// What it costs to read a file in a process of its own.
#include "model/ModelDocument.h"
#include "support/LargeModels.h"
#include "support/Programs.h"
#include <velaforge/formats/ReadJob.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/ModelReader.h>
#include <velaforge/scene/GraphicsContexts.h>

#include <osgDB/ReadFile>

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

using vfBenchmark::place;

namespace {

constexpr std::uint32_t triangles = 1000000;

/// With all that a view needs before it can show the model.
void apart(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        vfFormats::ReadJob job(vfFormats::ReadKind::Model, path);
        while (!job.wait(1000)) {
        }
        if (!job.take().scene)
            state.SkipWithError("the model was not read");
    }
}

void here(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        const vfFormats::ReadOutcome outcome = vfFormats::parseModel(path);
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

/// Opens a model of many parts, as far as the program works on it before it is drawn, and isolates one.
void manyParts(benchmark::State& state, const std::string& path)
{
    for (auto _ : state) {
        vfFormats::ReadJob job(vfFormats::ReadKind::Model, path);
        while (!job.wait(1000)) {
        }
        vfFormats::ReadOutcome outcome = job.take();
        if (!outcome.scene) {
            state.SkipWithError("the model was not read");
            continue;
        }
        for (const auto& [points, outline] : outcome.hulls)
            vfScene::rememberHull(*points, outline);
        vfViewer::ModelDocument document;
        const vfScene::ModelScene& scene = document.getModelScene();
        document.getModelScene().setModel(outcome.scene);
        const auto parts = scene.parts();
        benchmark::DoNotOptimize(scene.othersThan(*parts.front()).size());
    }
}

/// Writes a file of that many parts of one triangle each.
void writeParts(const std::string& path, int count)
{
    std::ofstream file(path);
    for (int i = 0; i < count; ++i) {
        const int x = i % 500;
        const int y = i / 500;
        file << "o part" << i << "\nv " << x << ' ' << y << " 0\nv " << x << ".8 " << y << " 0\nv " << x
             << ' ' << y << ".8 1\nf -3 -2 -1\n";
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    vfFormats::prepareReading();
    vfFormats::FileGate::install();
    vfScene::expectFewGraphicsContexts();
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
    for (const int count : {10000, 40000, 300000}) {
        const std::string name = std::to_string(count) + " parts/";
        for (const bool isHalf : {false, true}) {
            const std::string path = place().file(std::to_string(isHalf ? count / 2 : count) + "parts.obj");
            writeParts(path, isHalf ? count / 2 : count);
            benchmark::RegisterBenchmark((name + (isHalf ? "half" : "ours")).c_str(), manyParts, path)
                ->Unit(benchmark::kMillisecond)
                ->UseRealTime();
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
