// SPDX-License-Identifier: MIT
// Opening a model through the application, with a document that only reads it, beside the reader alone.
#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>

#include <osg/Node>
#include <osgDB/Options>
#include <osgDB/ReadFile>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>

#include <stdlib.h>
#include <unistd.h>

using namespace vfApplication;

namespace {

osg::ref_ptr<osg::Node> readModel(const std::string& path)
{
    static const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("noTriStripPolygons");
    return osgDB::readRefNodeFile(path, options);
}

struct Model : Document
{
    bool doOpenDocument(const vfBase::VfString& path, const vfBase::Options&) override
    {
        scene = readModel(path.str());
        return scene.valid();
    }
    void concreteDocumentOperation() override {}

    osg::ref_ptr<osg::Node> scene;
};

struct NoView : View
{
    bool onCreate(Document*, const vfBase::Options&) override { return true; }
};

const vfBase::ClassInfo modelInfo("benchmark", "Model", "benchmark::Model", &Document::s_classInfo, nullptr,
                                  sizeof(Model), []() -> vfBase::VfObject* { return new Model; });
const vfBase::ClassInfo viewInfo("benchmark", "NoView", "benchmark::NoView", &View::s_classInfo, nullptr,
                                 sizeof(NoView), []() -> vfBase::VfObject* { return new NoView; });

struct Setup : ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        new DocTemplate(&Application::instance(false)->getDocManager(), "Models", "stl", "", "stl", "", "",
                        &modelInfo, &viewInfo, DocTemplate::Visible, 0, vfBase::Options());
    }
};

/// A binary STL file of a wavy surface, deleted at the end.
class ModelFile
{
public:
    explicit ModelFile(std::uint32_t triangleCount)
    {
        const int descriptor = mkstemps(m_path, 4);
        if (descriptor >= 0)
            close(descriptor);
        std::ofstream file(m_path, std::ios::binary);
        const char header[80] = "a wavy surface";
        file.write(header, sizeof(header));
        file.write(reinterpret_cast<const char*>(&triangleCount), sizeof(triangleCount));
        for (std::uint32_t i = 0; i < triangleCount; ++i) {
            const float x = static_cast<float>(i % 500);
            const float y = std::floor(static_cast<float>(i) / 500);
            const float z = static_cast<float>((i * 7919) % 31);
            const float values[12] = {0, 0, 1, x, y, z, x + 1, y, z, x, y + 1, z};
            file.write(reinterpret_cast<const char*>(values), sizeof(values));
            file.write("\0", 2);
        }
    }
    ~ModelFile() { unlink(m_path); }

    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;

    const char* path() const { return m_path; }

private:
    char m_path[40] = "/tmp/velaforge-benchmark-XXXXXX.stl";
};

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    const ModelFile file(100000);
    int none = 1;
    HeadlessApplicationProducer::install();
    Application application(none, argv, Setup());

    benchmark::RegisterBenchmark("open/ours", [&](benchmark::State& state) {
        for (auto _ : state) {
            Document* document = application.openDocument(file.path(), vfBase::Options());
            if (!document || !application.closeDocument(document))
                state.SkipWithError("the model was not opened");
        }
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("open/readRefNodeFile", [&](benchmark::State& state) {
        for (auto _ : state) {
            if (!readModel(file.path()))
                state.SkipWithError("the model was not read");
        }
    })->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
