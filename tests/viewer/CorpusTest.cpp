// SPDX-License-Identifier: MIT
// Damaged files of every format, one after another in one program: a few in the test, any number under "./dev soak", and
// those that once did harm or bring their reader to an end.
#include "support/Gltf.h"
#include "support/Models.h"
#include "support/Reading.h"
#include "support/Search.h"
#include "support/Spoiler.h"

#include <osg/ComputeBoundsVisitor>

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfFormats::ReadJob;
using vfFormats::ReadKind;
using vfFormats::ReadLimits;
using vfFormats::ReadOutcome;
using vfTest::Search;

namespace {

constexpr int mutants = 25;
constexpr int enoughToGrow = 1000; // until then the heap takes what it goes on using

constexpr unsigned int secondsAllowed = 1;
constexpr std::uint64_t memoryAllowed = std::uint64_t(512) * 1024 * 1024;

long residentKilobytes()
{
    malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    file >> pages >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

class OpeningFiles : public vfTest::Reading
{
protected:
    /// Opens a file as the program does, with little time and memory.
    void open(const std::string& path)
    {
        ReadLimits limits;
        limits.seconds = secondsAllowed;
        limits.memory = memoryAllowed;
        ReadJob job(ReadKind::Model, path, limits);
        ASSERT_TRUE(job.wait(300000)) << path;
        const ReadOutcome outcome = job.take();
        reason = outcome.reason;
        if (!outcome.scene) {
            ++refused;
            ASSERT_NE("", outcome.reason);
            ASSERT_EQ(std::string::npos, outcome.reason.find('\n')) << outcome.reason;
            crashed += outcome.reason.find("its reader fails") != std::string::npos;
            hung += outcome.reason.find("too long") != std::string::npos;
            return;
        }
        osg::ComputeBoundsVisitor bounds; // as a view does
        outcome.scene->accept(bounds);
        ASSERT_TRUE(bounds.getBoundingBox().valid());
    }

    std::string reason; ///< why the last one was not opened
    int refused = 0;
    int crashed = 0;
    int hung = 0;
};

class Corpus : public OpeningFiles, public testing::WithParamInterface<std::string>
{};

class KeptCases : public Corpus
{};

const std::string keptDirectory = VELAFORGE_SOURCE_DIR "/tests/fixtures/kept/";

std::vector<std::string> keptCases()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(keptDirectory)) {
        if (entry.path().extension() != ".md")
            names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST_P(Corpus, OfDamagedFilesDoesNoHarm)
{
    const std::string healthy = vfTest::readFile(vfTest::signpost(GetParam()));
    ASSERT_FALSE(healthy.empty());
    directory.write("signpost.bin", vfTest::readFile(vfTest::signpost("bin"))); // to which one format refers
    const char* keep = std::getenv("VELAFORGE_KEEP");
    [[maybe_unused]] long before = 0; // sanitizers keep what was freed
    int opened = 0;
    for (Search search("damaged files", mutants); search.next(); ++opened) {
        if (opened == enoughToGrow)
            before = residentKilobytes();
        const std::string mutant = vfTest::Spoiler(healthy, search.seed()).spoil();
        const int endedBefore = crashed + hung;
        open(directory.write("mutant." + GetParam(), mutant));
        if (keep && (HasFailure() || crashed + hung > endedBefore))
            vfTest::overwriteFile(std::string(keep) + "/" + std::to_string(search.seed()) + "." + GetParam(),
                                  mutant);
        ASSERT_FALSE(HasFatalFailure());
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    if (opened >= 2 * enoughToGrow) {
        EXPECT_LT(residentKilobytes() - before, 4096)
            << "grown by the files behind the first " << enoughToGrow;
    }
#endif
    std::cout << opened << " mutants: " << refused << " refused, of which the reader of " << crashed
              << " crashed and of " << hung << " hung" << std::endl;
    open(vfTest::signpost(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(EveryFormat, Corpus, testing::ValuesIn(vfTest::signpostFormats()),
                         [](const auto& tested) { return "of_" + tested.param; });

namespace {

/// What the models of the corpus do not have.
const std::pair<const char*, std::string>& richFile(int number)
{
    static const std::pair<const char*, std::string> files[] = {
        {"ply",
         "ply\nformat ascii 1.0\ncomment TextureFile a.png\nelement vertex 6\nproperty float x\nproperty "
         "float y\n"
         "property float z\nproperty float red\nproperty float green\nproperty float blue\nproperty float s\n"
         "property float t\nelement face 2\nproperty list uchar int vertex_indices\nproperty list uchar "
         "float "
         "texcoord\nproperty int texnumber\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n"
         "element edge 1\nproperty int vertex1\nproperty int vertex2\nelement tristrips 1\nproperty list int "
         "int "
         "vertex_indices\nend_header\n0 0 0 1 0 0 0 0\n1 0 0 1 0 0 0 0\n1 1 0 1 0 0 0 0\n0.5 0.2 0 1 0 0 0 "
         "0\n0 1 0 1 "
         "0 0 0 0\nnan 0 1 1 0 0 0 0\n5 0 1 2 3 4 10 0 0 1 0 1 1 0 0 0 1 0 9 8 7\n3 0 1 5 6 0 0 1 0 1 1 1 9 "
         "8 7\n0 1\n7 0 "
         "1 2 -1 2 3 4\n"},
        {"ply",
         std::string(
             "ply\nformat binary_big_endian 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
             "property float z\nproperty ushort red\nproperty ushort green\nproperty ushort blue\nelement "
             "face 2\nproperty list ushort uint vertex_indices\nend_header\n") +
             std::string(54, '\x3f') +
             std::string("\0\3\0\0\0\0\0\0\0\1\0\0\0\2\0\3\0\0\0\0\0\0\0\1\0\0\0\2", 28)},
        {"obj", "f 1/1/1 2/2/1 3\nf 4 3 2 1\nmtllib a.mtl\nusemtl a\nv 0 0 0 1 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 "
                "0\nvt 0 0\nvt 1 "
                "1\nvn 0 0 1\nl 1 2 9\np 3 -1\nf -1 -2 -3 # three\n"},
        {"stl",
         "SOLID a name\nfacet normal 0 0 1 outer loop vertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop "
         "endfacet\n"
         "endsolid a name solid b facet normal 0 0 1\rvertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endfacet"},
        {"gltf",
         vfTest::Gltf()
             .attribute("POSITION", 5122, "VEC3", 6, std::string(48, 'a'), R"(,"normalized":true)", 8)
             .attribute("COLOR_0", 5121, "VEC3", 6, std::string(24, 'b'), R"(,"normalized":true)", 4)
             .floats("TEXCOORD_0", 2, vfTest::squarePlaces())
             .material(
                 R"("emissiveFactor":[1,1,1],"emissiveTexture":{"index":0,"extensions":{"KHR_texture_transform":)"
                 R"({"scale":[2,3],"rotation":1}}})")
             .more(R"(,"textures":[{"source":0}],"images":[{"uri":"a%20b.png"}],)"
                   R"("extensionsUsed":["KHR_mesh_quantization","KHR_texture_transform"])")
             .text()},
        {"glb", vfTest::Gltf()
                    .attribute("POSITION", 5120, "VEC3", 6, std::string(24, 'a'), R"(,"normalized":true)", 4)
                    .binary()}};
    return files[static_cast<std::size_t>(number)];
}

class RichFiles : public OpeningFiles, public testing::WithParamInterface<int>
{};

} // namespace

TEST_P(RichFiles, ThatAreDamagedDoNoHarm)
{
    const auto& [format, healthy] = richFile(GetParam());
    open(directory.write(std::string("healthy.") + format, healthy));
    for (Search search("damaged rich files", mutants); search.next();) {
        const std::string mutant = vfTest::Spoiler(healthy, search.seed()).spoil();
        open(directory.write(std::string("mutant.") + format, mutant));
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_EQ(0, crashed) << "seed " << search.seed();
    }
}

INSTANTIATE_TEST_SUITE_P(All, RichFiles, testing::Range(0, 6), [](const auto& tested) {
    return std::string(richFile(tested.param).first) + std::to_string(tested.param);
});

TEST_P(KeptCases, DoNoHarm)
{
    open(keptDirectory + GetParam());
    // The next one is read as ever.
    EXPECT_TRUE(read(vfTest::signpost("obj")).scene);
}

INSTANTIATE_TEST_SUITE_P(All, KeptCases, testing::ValuesIn(keptCases()), [](const auto& tested) {
    std::string name = tested.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
});
