// SPDX-License-Identifier: MIT
#include "fuzz/FuzzTargets.h"
#include "support/EveryClass.h"
#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/SettingsDocument.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/TransferBytes.h>
#include <velaforge/formats/internal/TransferParts.h>
#include <velaforge/formats/readers/ObjReader.h>
#include <velaforge/formats/readers/PlyReader.h>
#include <velaforge/formats/readers/StlReader.h>
#include <velaforge/formats/readers/TrialFrame.h>
#include <velaforge/isolation/SharedMemory.h>
#include <velaforge/toolkit/Script.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>

#include <unistd.h>

namespace vfTest {

namespace {

/// Bytes as a file, which is in memory.
class MemoryFile
{
public:
    MemoryFile(const std::uint8_t* bytes, std::size_t size) : m_file(vfIsolation::makeSharedMemory("fuzz"))
    {
        if (m_file < 0 || write(m_file, bytes, size) != static_cast<ssize_t>(size))
            std::abort();
    }
    ~MemoryFile() { close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

void require(bool isRight)
{
    if (!isRight)
        std::abort();
}

void runScene(const std::uint8_t* bytes, std::size_t size)
{
    constexpr std::size_t alignment = 16;
    const std::size_t room = (size / alignment + 1) * alignment;
    const std::unique_ptr<void, void (*)(void*)> aligned(std::aligned_alloc(alignment, room), std::free);
    std::memcpy(aligned.get(), bytes, size);
    const vfFormats::ReadOutcome outcome = vfFormats::receiveScene(aligned.get(), size);
    require(outcome.scene.valid() != !outcome.reason.empty());
    if (outcome.scene)
        vfFormats::runTrialFrame(*outcome.scene); // as the program does, which draws what it was sent
}

std::string sent(osg::Node& scene)
{
    vfFormats::ReadOutcome outcome;
    outcome.scene = &scene;
    outcome.warnings = {"a warning"};
    const int file = vfIsolation::makeSharedMemory("scene");
    const long long size =
        vfFormats::SceneSender(file).send(outcome, vfFormats::SceneSender::LargeArrays::InFile);
    std::string bytes(static_cast<std::size_t>(size), ' ');
    require(pread(file, bytes.data(), bytes.size(), 0) == size);
    close(file);
    return bytes;
}

std::vector<std::string> sceneSeeds()
{
    return {sent(*triangleGeometry()), sent(*sceneOfGeometries()), sent(*sceneOfNodes()),
            sent(*sceneOfStates()),    sent(*movingScene()),       sent(*sceneOfEverything())};
}

/// Changes words of the scene, behind its arrays: what a reader could say rather than what chance makes of it.
std::size_t mutateScene(std::uint8_t* bytes, std::size_t size, unsigned int seed)
{
    vfFormats::Trailer trailer;
    if (size < sizeof(trailer))
        return 0;
    std::memcpy(&trailer, bytes + size - sizeof(trailer), sizeof(trailer));
    const std::size_t end = size - sizeof(trailer);
    if (trailer.magic != vfFormats::Trailer::expectedMagic || trailer.textsAt >= end)
        return 0;
    std::mt19937 random(seed);
    const auto below = [&random](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const std::size_t begin = static_cast<std::size_t>(trailer.textsAt) & ~std::size_t(3);
    if (end - begin < 8)
        return 0;
    static const std::uint32_t numbers[] = {0,          1,      2,          3,          16,        31,
                                            0x7fffffff, 0x7f80, 0x80000000, 0xffffffff, 0x7fc00000};
    for (std::size_t times = 1 + below(4); times > 0; --times) {
        std::uint8_t* at = bytes + begin + 4 * below((end - begin) / 4);
        std::uint32_t word = 0;
        std::memcpy(&word, at, sizeof(word));
        switch (below(4)) {
        case 0:
            word = numbers[below(std::size(numbers))];
            break;
        case 1:
            word += static_cast<std::uint32_t>(below(5)) - 2;
            break;
        case 2:
            std::memcpy(&word, bytes + begin + 4 * below((end - begin) / 4), sizeof(word));
            break;
        default:
            word ^= 1u << below(32);
        }
        std::memcpy(at, &word, sizeof(word));
    }
    return size;
}

template <vfFormats::ReadOutcome (*read)(const std::string& path)>
void runReader(const std::uint8_t* bytes, std::size_t size)
{
    const MemoryFile file(bytes, size);
    const vfFormats::ReadOutcome outcome = read(file.path());
    require(outcome.scene.valid() || !outcome.reason.empty());
}

std::vector<std::string> objSeeds()
{
    return {readFile(signpost("obj")),
            "v 0 0 0 1 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nvt 0 0\nvn 0 0 1\ng a b\nusemtl m\ns 1\n"
            "f -4/1/1 -3//1 \\\n-2/1\nl 1 2 3\np 1\nf 1 2 4 3\n"};
}

std::vector<std::string> stlSeeds()
{
    return {readFile(signpost("stl")), "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\n"
                                       "vertex 0 1e0 0\nendloop\nendfacet\nendsolid a\n"};
}

std::vector<std::string> plySeeds()
{
    return {
        readFile(signpost("ply")),
        "ply\nformat ascii 1.0\ncomment c\nelement vertex 4\nproperty float x\nproperty float y\n"
        "property double z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\nelement face 2\n"
        "property list uchar int vertex_indices\nproperty list uchar float texcoord\nend_header\n"
        "0 0 0 1 2 3\n1 0 0 255 0 0\n1 1 0 0 0 0\n0 1 0 0 0 0\n3 0 1 2 6 0 0 1 0 1 1\n4 0 1 2 3 0\n",
        "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
        "element tristrips 1\nproperty list int int vertex_indices\nend_header\n0 0 0\n1 0 0\n0 1 0\n"
        "4 0 1 2 -1\n"};
}

void runSettings(const std::uint8_t* bytes, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    std::string reason;
    const auto document = vfBase::SettingsDocument::parse(text, reason);
    require(document.has_value() != !reason.empty());
    if (!document)
        return;
    const auto again = vfBase::SettingsDocument::parse(document->text(), reason);
    require(again && *again == *document);
    const vfBase::SettingsDocument none;
    vfBase::SettingsDocument::merged(none, *document, *again);
}

std::vector<std::string> settingsSeeds()
{
    return {R"({"format": 1, "vfBase::Things": {"size": 5, "scale": 2.5, "is": true, "names": ["a", "b"]}})",
            R"({"format": 1, "a::B": {"map": {"x": "y", "z": null}, "list": [[1, 2], {"k": -1e300}]}})"};
}

void runScript(const std::uint8_t* bytes, std::size_t size)
{
    const MemoryFile file(bytes, size);
    std::vector<vfApplication::ScriptLine> lines;
    vfBase::VfString reason;
    const bool isRead = vfApplication::readScript(file.path(), lines, reason);
    require(isRead == reason.str().empty());
    require(std::all_of(lines.begin(), lines.end(), [](const auto& line) { return !line.text.empty(); }));
}

std::vector<std::string> scriptSeeds()
{
    return {"\xef\xbb\xbf# a comment\r\nvfViewer::ViewLeft\r\n\r\n  vfViewer::SaveAs=a b.osgb  \n"};
}

/// Arguments stand one on a line.
void runCommandLine(const std::uint8_t* bytes, std::size_t size)
{
    std::vector<std::string> texts = {"program"};
    std::string text(reinterpret_cast<const char*>(bytes), std::find(bytes, bytes + size, 0) - bytes);
    for (std::size_t at = 0; at < text.size() && texts.size() < 100;) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        texts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    std::vector<char*> arguments;
    for (std::string& one : texts)
        arguments.push_back(one.data());
    arguments.push_back(nullptr);
    int count = static_cast<int>(texts.size());
    vfBase::ArgumentParser parser(&count, arguments.data());
    vfBase::VfString words;
    int whole = 0;
    double real = 0;
    parser.readOptionParameter("--verbose");
    parser.readOptionParameter("--size", words);
    parser.readOptionParameter("--count", whole);
    parser.readOptionParameter("--real", real);
    parser.reportRemainingOptionsAsUnrecognized();
    require(count >= 1);
}

std::vector<std::string> commandLineSeeds()
{
    return {"--verbose\n--size\n3x4\n--count\n5\n--real\n2.5e3\nfile.obj\n--unknown\n--size=1\n-h\n"};
}

} // namespace

const std::vector<FuzzTarget>& fuzzTargets()
{
    static const std::vector<FuzzTarget> targets = {
        {"scene", runScene, sceneSeeds, mutateScene},
        {"obj", runReader<vfFormats::readObj>, objSeeds, nullptr},
        {"stl", runReader<vfFormats::readStl>, stlSeeds, nullptr},
        {"ply", runReader<vfFormats::readPly>, plySeeds, nullptr},
        {"settings", runSettings, settingsSeeds, nullptr},
        {"script", runScript, scriptSeeds, nullptr},
        {"command-line", runCommandLine, commandLineSeeds, nullptr},
    };
    return targets;
}

const FuzzTarget* fuzzTarget(const std::string& name)
{
    for (const FuzzTarget& target : fuzzTargets()) {
        if (target.name == name)
            return &target;
    }
    return nullptr;
}

} // namespace vfTest
