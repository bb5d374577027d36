// SPDX-License-Identifier: MIT
// Files that are read in a process of their own.
#include "support/LargeModels.h"
#include "support/Models.h"
#include "support/Reading.h"
#include "support/Search.h"
#include "support/Spoiler.h"

#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/WriteJob.h>
#include <velaforge/formats/internal/ReadRequest.h>
#include <velaforge/formats/internal/SceneImages.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/TransferBytes.h>
#include <velaforge/formats/internal/TransferParts.h>
#include <velaforge/formats/readers/ModelReader.h>
#include <velaforge/isolation/SharedMemory.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/PagedLOD>
#include <osg/Program>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using vfFormats::LargeArrayOwner;
using vfFormats::ReadJob;
using vfFormats::ReadKind;
using vfFormats::ReadLimits;
using vfFormats::ReadOutcome;

namespace {

class ReadJobs : public vfTest::Reading
{
protected:
    std::string slowModel() const { return directory.write("slow.obj", vfTest::slowModel()); }
};

/// All that is drawn, in the order of the scene, as bytes.
struct Contents : osg::NodeVisitor
{
    explicit Contents(osg::Node& node) : NodeVisitor(TRAVERSE_ALL_CHILDREN)
    {
        setNodeMaskOverride(~0u);
        node.accept(*this);
    }

    void apply(osg::Node& node) override
    {
        text += node.className() + std::string(" ") + node.getName() + "\n";
        add(node.getStateSet());
        traverse(node);
    }

    void apply(osg::Geometry& geometry) override
    {
        text += "Geometry\n";
        add(geometry.getStateSet());
        osg::Geometry::ArrayList arrays;
        geometry.getArrayList(arrays);
        for (const auto& array : arrays) {
            text += array->className() + std::string(" ") + std::to_string(array->getBinding()) + " ";
            text.append(static_cast<const char*>(array->getDataPointer()), array->getTotalDataSize());
        }
        for (unsigned int i = 0; i < geometry.getNumPrimitiveSets(); ++i) {
            const osg::PrimitiveSet& set = *geometry.getPrimitiveSet(i);
            text += set.className() + std::string(" ") + std::to_string(set.getMode()) + ":";
            for (unsigned int index = 0; index < set.getNumIndices(); ++index)
                text += std::to_string(set.index(index)) + " ";
        }
    }

    void add(const osg::StateSet* state)
    {
        if (!state)
            return;
        for (const auto& [type, attribute] : state->getAttributeList())
            text += attribute.first->className() + std::string("\n");
        const auto* texture =
            dynamic_cast<const osg::Texture2D*>(state->getTextureAttribute(0, osg::StateAttribute::TEXTURE));
        if (texture && texture->getImage())
            text.append(reinterpret_cast<const char*>(texture->getImage()->data()),
                        texture->getImage()->getTotalSizeInBytes());
    }

    std::string text;
};

std::multiset<std::string> partsOf(osg::Node& scene)
{
    struct Parts : osg::NodeVisitor
    {
        Parts() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
        void apply(osg::Geode& geode) override { found.insert(Contents(geode).text); }
        std::multiset<std::string> found;
    } parts;
    scene.accept(parts);
    return parts.found;
}

std::vector<pid_t> childrenOf(const std::string& process)
{
    std::vector<pid_t> children;
    std::error_code gone;
    for (const auto& thread : fs::directory_iterator("/proc/" + process + "/task", gone)) {
        std::ifstream file(thread.path() / "children");
        for (pid_t child = 0; file >> child;)
            children.push_back(child);
    }
    return children;
}

/// @return the processes that read a file, in the order in which they were made; others wait for one
std::vector<pid_t> readers()
{
    std::vector<pid_t> all;
    for (const pid_t host : childrenOf("self")) {
        for (const pid_t reader : childrenOf(std::to_string(host))) {
            std::ifstream file("/proc/" + std::to_string(reader) + "/comm");
            std::string name;
            if (std::getline(file, name) && name == vfFormats::modelTask)
                all.push_back(reader);
        }
    }
    return all;
}

/// Waits for a condition, two minutes at most, which ends a test that would wait for ever.
template <class Condition>
bool waitFor(Condition condition)
{
    for (int i = 0; i < 12000; ++i) {
        if (condition())
            return true; // which need not last
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

/// Waits for the first of some processes, which another one may just be making.
pid_t firstOf(std::vector<pid_t> (*find)())
{
    std::vector<pid_t> found;
    if (!waitFor([&] { return !(found = find()).empty(); }))
        throw std::runtime_error("there is no such process");
    return found.front();
}

/// @return the process that makes the readers
pid_t launcherProcess()
{
    return firstOf([] { return childrenOf("self"); });
}

pid_t readerProcess()
{
    return firstOf(readers);
}

} // namespace

TEST_F(ReadJobs, EveryFormatComesOverAsItWasRead)
{
    std::vector<std::string> formats = vfTest::signpostFormats();
    for (const std::string& format : formats) {
        const ReadOutcome here = vfFormats::parseModel(vfTest::signpost(format));
        const ReadOutcome there = read(vfTest::signpost(format));
        ASSERT_TRUE(here.scene) << format;
        ASSERT_TRUE(there.scene) << format << ": " << there.reason;
        if (format == "lwo") // whose reader puts the parts in the order of their addresses
            EXPECT_EQ(partsOf(*here.scene), partsOf(*there.scene));
        else
            EXPECT_TRUE(Contents(*here.scene).text == Contents(*there.scene).text) << format;
        EXPECT_EQ(here.warnings, there.warnings);
    }
}

TEST_F(ReadJobs, TexturesComeOverWithTheScene)
{
    const ReadOutcome outcome = read(VELAFORGE_SOURCE_DIR "/models/sailboat.obj");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_GT(Contents(*outcome.scene).text.size(), 200u * 1024) << "the image of the sail";
    EXPECT_EQ(Contents(*vfFormats::parseModel(VELAFORGE_SOURCE_DIR "/models/sailboat.obj").scene).text,
              Contents(*outcome.scene).text);
}

TEST_F(ReadJobs, WhatIsSharedInTheSceneStaysShared)
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX);
    for (int i = 0; i < 300; ++i)
        points->push_back(osg::Vec3(static_cast<float>(i), static_cast<float>(i % 7), 1));
    const osg::ref_ptr<osg::Vec3Array> normals = new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, 300);
    std::fill(normals->begin(), normals->end(), osg::Vec3(0, 0, 1));
    const osg::ref_ptr<osg::Group> root = new osg::Group;
    for (int i = 0; i < 3; ++i) {
        const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
        geometry->setVertexArray(points);
        geometry->setNormalArray(normals);
        geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, i * 30, 30));
        root->addChild(geometry);
    }
    root->addChild(root->getChild(0)); // and one of them twice
    const std::string path = directory.file("shared.osgb");
    ASSERT_TRUE(osgDB::writeNodeFile(*root, path));
    const ReadOutcome outcome = read(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const osg::Group& group = *outcome.scene->asGroup();
    ASSERT_EQ(4u, group.getNumChildren());
    EXPECT_EQ(group.getChild(0), group.getChild(3));
    const osg::Array* first = group.getChild(0)->asGeometry()->getVertexArray();
    EXPECT_EQ(300u, first->getNumElements());
    EXPECT_EQ(first, group.getChild(1)->asGeometry()->getVertexArray());
    EXPECT_EQ(first, group.getChild(2)->asGeometry()->getVertexArray());
}

TEST_F(ReadJobs, AnImageComesOver)
{
    const ReadOutcome outcome =
        read(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/quarters.png", {}, ReadKind::Image);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_GT(Contents(*outcome.scene).text.size(), 128u * 96 * 3);
}

TEST_F(ReadJobs, FilesCutAnywhereAreAReasonAndNoCrash)
{
    for (const std::string& format : vfTest::signpostFormats()) {
        const std::string whole = vfTest::readFile(vfTest::signpost(format));
        for (std::size_t part = 1; part < 20; ++part) {
            const std::string path =
                directory.write("cut." + format, whole.substr(0, whole.size() * part / 20));
            const ReadOutcome outcome = read(path);
            EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty()) << format << " " << part;
            EXPECT_EQ(std::string::npos, outcome.reason.find('\n')) << outcome.reason;
            // Formats of statements one after another do not tell where they end; what is missing is told elsewhere.
            EXPECT_TRUE(!outcome.scene || !outcome.warnings.empty() || format == "obj" || format == "nff")
                << format << " " << part;
        }
    }
}

TEST_F(ReadJobs, AReaderThatDoesNotComeToAnEndIsEnded)
{
    ReadLimits limits;
    limits.seconds = 1;
    const ReadOutcome outcome = read(slowModel(), limits);
    EXPECT_FALSE(outcome.scene);
    EXPECT_THAT(outcome.reason, HasSubstr("takes too long"));
    EXPECT_TRUE(waitFor([] { return readers().empty(); }));
}

#if !defined(__SANITIZE_ADDRESS__) &&                                                                        \
    !defined(__SANITIZE_THREAD__) // which need more room than any limit leaves
TEST_F(ReadJobs, AFileThatPromisesMoreThanThereIsRoomForIsAReason)
{
    ReadLimits limits;
    limits.memory = 1024ull * 1024 * 1024;
    for (const char* text : {"ply\nformat binary_little_endian 1.0\nelement vertex 1000000000\n"
                             "property float x\nproperty float y\nproperty float z\nelement face 1\n"
                             "property list uchar int vertex_indices\nend_header\n"})
    {
        const ReadOutcome outcome =
            read(directory.write("promise.ply", text + std::string(100000, 'x')), limits);
        EXPECT_FALSE(outcome.scene);
        EXPECT_NE("", outcome.reason);
    }
    std::ofstream(directory.file("sparse.obj")) << "v 0 0 0\n";
    fs::resize_file(directory.file("sparse.obj"), 8ull * 1024 * 1024 * 1024);
    EXPECT_NE("", read(directory.file("sparse.obj"), limits).reason);
}

/// A red image in the format SGI, whose rows are the same bytes of the file.
std::string redImage(std::uint32_t width)
{
    std::string image;
    const auto append = [&image](std::uint32_t number, int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
            image += static_cast<char>(number >> shift & 0xff);
    };
    append(474, 2);
    append(1, 1); // compressed
    append(1, 1);
    append(3, 2);
    append(width, 2);
    append(width, 2);
    append(3, 2);
    append(0, 4);
    append(255, 4);
    image.resize(512);
    std::vector<std::string> rows;
    for (const char value : {'\xff', '\x01', '\x01'}) {
        std::string row;
        for (std::uint32_t left = width; left > 0; left -= std::min(left, 127u)) {
            row += static_cast<char>(std::min(left, 127u));
            row += value;
        }
        rows.push_back(row + '\0');
    }
    const auto first = static_cast<std::uint32_t>(512 + width * 3 * 8);
    const auto length = static_cast<std::uint32_t>(rows[0].size());
    for (std::uint32_t i = 0; i < 3 * width; ++i)
        append(first + i / width * length, 4);
    for (std::uint32_t i = 0; i < 3 * width; ++i)
        append(length, 4);
    return image + rows[0] + rows[1] + rows[2];
}

TEST_F(ReadJobs, AModelWithAnImageThatJustFitsOpensAndWithOneThatDoesNotFitIsShownWithoutIt)
{
    constexpr int width = 8192;
    directory.write("red.rgb", redImage(width));
    directory.write("a.mtl", "newmtl a\nmap_Kd red.rgb\n");
    const std::string path = directory.write(
        "a.obj",
        "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\nusemtl a\nf 1/1 2/2 3/3\n");
    const auto imageOf = [](const ReadOutcome& outcome) {
        std::size_t bytes = 0;
        vfFormats::FindImages find;
        outcome.scene->accept(find);
        for (const osg::ref_ptr<osg::Image>& image : find.images)
            bytes += image->getTotalSizeInBytes();
        return bytes;
    };
    constexpr std::uint64_t megabyte = 1024 * 1024;
    ReadLimits limits;
    limits.memory = 400 * megabyte;
    const ReadOutcome fitting = read(path, limits);
    ASSERT_TRUE(fitting.scene) << fitting.reason;
    EXPECT_EQ(3u * width * width, imageOf(fitting));
    EXPECT_THAT(fitting.warnings, testing::IsEmpty());
    limits.memory = 180 * megabyte;
    const ReadOutcome without = read(path, limits);
    ASSERT_TRUE(without.scene) << without.reason;
    EXPECT_EQ(0u, imageOf(without));
    EXPECT_THAT(without.warnings, testing::Contains(HasSubstr("not enough memory for this image")));
}
#endif

TEST_F(ReadJobs, TheProcessThatReadsIsLockedDown)
{
    const ReadJob job(ReadKind::Model, slowModel());
    const std::string status = "/proc/" + std::to_string(readerProcess()) + "/status";
    EXPECT_TRUE(waitFor([&status] {
        const std::string text = vfTest::readFile(status);
        return text.find("\nSeccomp:\t2\n") != std::string::npos &&
               text.find("\nNoNewPrivs:\t1\n") != std::string::npos;
    }));
}

TEST_F(ReadJobs, CancelReturnsAtOnceAndEndsTheProcess)
{
    const std::string path = slowModel();
    ReadJob job(ReadKind::Model, path);
    ASSERT_TRUE(waitFor([] { return !readers().empty(); }));
    EXPECT_FALSE(job.isDone());
    job.cancel();
    EXPECT_TRUE(job.isDone());
    EXPECT_LT(job.progress(), 0.9) << "it waited for the reader";
    const ReadOutcome outcome = job.take();
    EXPECT_TRUE(outcome.isCancelled);
    EXPECT_FALSE(outcome.scene);
    EXPECT_EQ("", outcome.reason);
    EXPECT_TRUE(waitFor([] { return readers().empty(); }));
}

TEST_F(ReadJobs, AJobThatGoesIsCancelled)
{
    {
        const ReadJob job(ReadKind::Model, slowModel());
        ASSERT_TRUE(waitFor([] { return !readers().empty(); }));
    }
    EXPECT_TRUE(waitFor([] { return readers().empty(); }));
}

TEST_F(ReadJobs, TellsHowFarItHasCome)
{
    ReadJob job(ReadKind::Model, slowModel());
    double before = 0;
    EXPECT_TRUE(waitFor([&] {
        const double now = job.progress();
        EXPECT_LE(before, std::max(now, 0.0));
        before = std::max(now, before);
        return before > 0.001;
    }));
    EXPECT_LE(before, 1.0);
}

TEST_F(ReadJobs, TellsHowFarAFormatIsReadWhoseReaderDoesNotTell)
{
    // A plug-in reads it, so that only the position in the file shows how far it has come.
    constexpr int count = 500000;
    std::string text = "AC3Db\nMATERIAL \"m\" rgb 1 1 1 amb 0 0 0 emis 0 0 0 spec 0 0 0 shi 0 trans "
                       "0\nOBJECT world\nkids 1\n"
                       "OBJECT poly\nnumvert " +
                       std::to_string(count) + "\n";
    for (int i = 0; i < count; ++i)
        text += std::to_string(i % 707) + " " + std::to_string(i / 707) + " 0.123456\n";
    text += "numsurf " + std::to_string(count / 3) + "\n";
    for (int i = 0; i < count / 3; ++i)
        text += "SURF 0x20\nmat 0\nrefs 3\n" + std::to_string(i) + " 0 0\n" + std::to_string(i + 1) +
                " 1 0\n" + std::to_string(i + 707) + " 0 1\n";
    text += "kids 0\n";
    ReadJob job(ReadKind::Model, directory.write("large.ac", text));
    std::set<double> told;
    while (!job.wait(1))
        told.insert(job.progress());
    EXPECT_TRUE(std::any_of(told.begin(), told.end(), [](double part) { return part > 0 && part < 0.75; }));
    EXPECT_TRUE(job.take().scene);
}

TEST_F(ReadJobs, TellsWhenItIsDone)
{
    std::atomic<int> told{0};
    ReadJob job(ReadKind::Model, vfTest::signpost("stl"));
    job.whenDone([&told] { ++told; });
    EXPECT_TRUE(waitFor([&] { return told == 1; }));
    EXPECT_TRUE(job.isDone());
    EXPECT_TRUE(job.take().scene);
    job.whenDone([&told] { ++told; });
    EXPECT_EQ(2, told) << "at once";
}

TEST_F(ReadJobs, TheOtherFilesOfAModelAreTold)
{
    const auto others = [](const std::string& path) {
        std::set<std::string> names;
        const std::string place = fs::path(path).parent_path().string();
        for (const std::string& file : read(path).files) {
            EXPECT_EQ(place, fs::path(file).parent_path().string());
            names.insert(fs::path(file).filename().string());
        }
        return names;
    };
    const std::string models = VELAFORGE_SOURCE_DIR "/models/";
    EXPECT_EQ((std::set<std::string>{"sailboat.mtl", "sail.png"}), others(models + "sailboat.obj"));
    EXPECT_EQ(std::set<std::string>(), others(vfTest::signpost("stl")));
    if (vfFormats::hasAssimp()) {
        EXPECT_EQ(std::set<std::string>{"signpost.bin"}, others(vfTest::signpost("gltf")));
    }
}

/// @return the letter with which the system tells what a process does; 0 for no process
char stateOf(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string word;
    file >> word >> word >> word;
    return word.empty() ? '\0' : word.front();
}

TEST_F(ReadJobs, ALauncherThatIsKilledIsReplacedAndNothingOfItIsLeft)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    for (int i = 0; i < 3; ++i) {
        const std::vector<pid_t> launchers = childrenOf("self");
        ASSERT_EQ(1u, launchers.size());
        kill(launchers.front(), SIGKILL);
        EXPECT_TRUE(waitFor([&] { return stateOf(launchers.front()) == 'Z'; }));
        const ReadOutcome outcome = read(vfTest::signpost("stl"));
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_EQ('\0', stateOf(launchers.front())) << "it is still there";
    }
}

TEST_F(ReadJobs, AFileThatCrashesItsReaderIsAReasonAlsoAfterTheLauncherWasKilled)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    kill(launcherProcess(), SIGKILL);
    ReadJob job(ReadKind::Model, slowModel());
    ASSERT_TRUE(waitFor([] { return !readers().empty(); }));
    kill(readerProcess(),
         SIGABRT); // sanitizers handle SIGSEGV, and may wait for a lock that they hold themselves
    ASSERT_TRUE(job.wait(120000)) << "it waits for a process that is gone";
    EXPECT_THAT(job.take().reason, HasSubstr("its reader fails"));
}

TEST_F(ReadJobs, ALauncherThatIsKilledWhileAFileIsReadCostsThatFile)
{
    ReadJob job(ReadKind::Model, slowModel());
    ASSERT_TRUE(waitFor([&job] { return job.progress() > 0; })); // before that it would be tried once more
    const pid_t reading = readerProcess();
    kill(launcherProcess(), SIGKILL);
    ASSERT_TRUE(job.wait(120000));
    EXPECT_FALSE(job.take().scene);
    EXPECT_TRUE(waitFor([&] { return stateOf(reading) == '\0'; }));
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
}

TEST_F(ReadJobs, ALauncherThatDoesNotAnswerIsAReasonAndThenReplaced)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    const pid_t launching = launcherProcess();
    kill(launching, SIGSTOP);
    ReadLimits limits;
    limits.clockSeconds = 1;
    EXPECT_THAT(read(vfTest::signpost("stl"), limits).reason, HasSubstr("does not answer"));
    EXPECT_EQ('\0', stateOf(launching));
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
}

TEST_F(ReadJobs, AJobThatALauncherDoesNotAnswerCanBeCancelled)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    const pid_t launching = launcherProcess();
    kill(launching, SIGSTOP);
    {
        std::vector<std::unique_ptr<ReadJob>> jobs; // more than its socket has room for
        for (int i = 0; i < 20; ++i)
            jobs.push_back(std::make_unique<ReadJob>(ReadKind::Model, vfTest::signpost("stl")));
    }
    ReadJob::waitForThreads();
    kill(launching, SIGCONT);
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
}

TEST_F(ReadJobs, AReaderThatOnlyWaitsIsEnded)
{
    ReadLimits limits;
    limits.clockSeconds = 1;
    ReadJob job(ReadKind::Model, slowModel(), limits);
    ASSERT_TRUE(waitFor([] { return !readers().empty(); }));
    const pid_t reading = readerProcess();
    kill(reading, SIGSTOP);
    ASSERT_TRUE(job.wait(120000)) << "it has used no time of its own";
    EXPECT_THAT(job.take().reason, HasSubstr("takes too long"));
    EXPECT_TRUE(waitFor([&] { return stateOf(reading) == '\0'; }));
}

void nothing(int) {}

TEST_F(ReadJobs, SignalsToTheProgramDoNotDisturbTheWaiting)
{
    struct sigaction action = {};
    action.sa_handler = nothing; // without SA_RESTART, so that calls are interrupted
    sigaction(SIGUSR1, &action, nullptr);
    ReadLimits limits;
    limits.seconds = 1;
    ReadJob job(ReadKind::Model, slowModel(), limits);
    while (!job.wait(1)) {
        for (const auto& thread : fs::directory_iterator("/proc/self/task"))
            syscall(SYS_tgkill, getpid(), std::atoi(thread.path().filename().c_str()), SIGUSR1);
    }
    EXPECT_THAT(job.take().reason, HasSubstr("takes too long"));
}

std::set<std::string> openDescriptors()
{
    std::set<std::string> open;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd"))
        open.insert(entry.path().filename().string());
    return open;
}

TEST_F(ReadJobs, NoDescriptorIsLeftOverAndNoneIsInherited)
{
    read(vfTest::signpost("stl"));
    ReadJob::waitForThreads();
    const std::set<std::string> before = openDescriptors();
    const std::string crashing = slowModel();
    for (int i = 0; i < 5; ++i) {
        read(vfTest::signpost("obj"));
        read(directory.write("damaged.stl", "solid"));
        ReadJob cancelled(ReadKind::Model, crashing);
        EXPECT_TRUE(waitFor([] { return !readers().empty(); }));
        kill(readerProcess(), SIGKILL);
        kill(launcherProcess(), SIGKILL);
        cancelled.cancel();
    }
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    ReadJob::waitForThreads();
    // Another reader is being made ready meanwhile, as one was before.
    EXPECT_TRUE(waitFor([&before] { return openDescriptors().size() <= before.size(); }));
    // Standard streams, the socket to the program, and what libraries open for themselves.
    const int inherited = open(directory.file("damaged.stl").c_str(), O_RDONLY); // as other code may do
    kill(launcherProcess(), SIGKILL);
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(launcherProcess()) + "/fd"))
        EXPECT_THAT(fs::read_symlink(entry.path()).string(), Not(HasSubstr("damaged.stl")));
    close(inherited);
}

TEST_F(ReadJobs, SeveralAtOnceDoNotDisturbOneAnother)
{
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&good, i] {
            for (const char* format : {"stl", "obj", "3ds"})
                good += read(vfTest::signpost(i % 2 ? format : "ply")).scene.valid();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(12, good);
}

TEST_F(ReadJobs, AFileIsFoundFromTheDirectoryOfTheProgram)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene); // the process is there before the directory changes
    fs::copy_file(vfTest::signpost("stl"), directory.file("here.stl"));
    fs::current_path(directory.path());
    EXPECT_TRUE(read("here.stl").scene);
    EXPECT_THAT(read("elsewhere.stl").reason, HasSubstr("No such file"));
    fs::current_path("/");
}

/// Copies memory of this process if it is there.
bool copyHere(std::uint64_t address, void* to, std::size_t size)
{
    const iovec here = {to, size};
    const iovec there = {reinterpret_cast<void*>(address), size};
    return process_vm_readv(getpid(), &here, 1, &there, 1, 0) == static_cast<ssize_t>(size);
}

/// Makes the system refuse a call to this process and those that it starts.
void refuseCall(unsigned int number, unsigned int error)
{
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter = {std::size(program), program};
    ASSERT_EQ(0, prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0));
    ASSERT_EQ(0, prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter));
}

TEST_F(ReadJobs, ALargeModelComesWholeAlsoWhereProcessesMayNotBeLookedInto)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 20000);
    const ReadOutcome looked = read(path);
    ASSERT_TRUE(looked.scene) << looked.reason;
    refuseCall(SYS_process_vm_readv, EPERM);
    EXPECT_FALSE(copyHere(reinterpret_cast<std::uintptr_t>(&path), std::string(8, ' ').data(), 8));
    const ReadOutcome written = read(path);
    ASSERT_TRUE(written.scene) << written.reason;
    const ReadOutcome inPlace = vfFormats::parseModel(path);
    EXPECT_EQ(Contents(*inPlace.scene).text, Contents(*looked.scene).text);
    EXPECT_EQ(Contents(*inPlace.scene).text, Contents(*written.scene).text);
}

TEST_F(ReadJobs, WhereAPartOfTheSandboxIsMissingItIsToldAndNothingIsReadIfItIsRequired)
{
    const std::string path = vfTest::signpost("obj");
    refuseCall(SYS_landlock_create_ruleset, ENOSYS); // as older kernels do
    const ReadOutcome outcome = read(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.details,
                testing::Contains(HasSubstr("the sandbox is not complete: Landlock is not there")));
    vfFormats::requireSandbox();
    const ReadOutcome refused = read(path);
    EXPECT_FALSE(refused.scene);
    EXPECT_THAT(refused.reason, HasSubstr("the sandbox is not complete: Landlock is not there"));
    const std::string target = directory.file("a.stl");
    EXPECT_THAT(vfFormats::writeModel(*outcome.scene, target).reason, HasSubstr("Landlock is not there"));
    EXPECT_FALSE(fs::exists(target));
}

TEST_F(ReadJobs, WithTheWholeSandboxNothingIsMissing)
{
    vfFormats::requireSandbox();
    const ReadOutcome outcome = read(vfTest::signpost("obj"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.details, testing::Not(testing::Contains(HasSubstr("sandbox"))));
}

/// What a reader has sent, which keeps its large arrays.
class Sending
{
public:
    explicit Sending(ReadOutcome sent)
        : m_sent(std::move(sent)), m_file(vfIsolation::makeSharedMemory("scene")), m_sender(m_file)
    {
        const long long size = m_sender.send(m_sent, vfFormats::SceneSender::LargeArrays::InThisProcess);
        bytes.resize(static_cast<std::size_t>(size));
        EXPECT_EQ(size, pread(m_file, bytes.data(), bytes.size(), 0));
    }
    explicit Sending(const std::string& path) : Sending(vfFormats::parseModel(path)) {}
    ~Sending() { close(m_file); }
    Sending(const Sending&) = delete;
    Sending& operator=(const Sending&) = delete;

    std::string bytes;

private:
    ReadOutcome m_sent;
    int m_file;
    vfFormats::SceneSender m_sender;
};

/// @return what comes of bytes that another process sent, whose memory is as this one's
ReadOutcome receive(const std::string& bytes,
                    const LargeArrayOwner& owner = {std::uint64_t(1) << 32, copyHere})
{
    const std::atomic<bool> stop{false};
    ReadOutcome outcome = vfFormats::receiveScene(bytes.data(), bytes.size(), owner, stop);
    EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty());
    return outcome;
}

template <class Number>
void overwrite(std::string& bytes, std::size_t at, Number number)
{
    std::memcpy(bytes.data() + at, &number, sizeof(number));
}

template <class Number>
Number numberAt(const std::string& bytes, std::size_t at)
{
    Number number = 0;
    std::memcpy(&number, bytes.data() + at, sizeof(number));
    return number;
}

/// Where the parts of a transfer stand.
struct Parts
{
    explicit Parts(const std::string& bytes)
    {
        std::memcpy(&trailer, bytes.data() + bytes.size() - sizeof(trailer), sizeof(trailer));
        texts = static_cast<std::size_t>(trailer.textsAt);
        auto at = static_cast<std::size_t>(trailer.sceneAt);
        const auto names = static_cast<std::size_t>(numberAt<std::uint64_t>(bytes, at));
        at += 8;
        std::size_t length = 0;
        for (std::size_t i = 0; i < names; ++i)
            length += numberAt<std::uint32_t>(bytes, at + 4 * i);
        at += 4 * names + length;
        arrayCount = static_cast<std::size_t>(numberAt<std::uint64_t>(bytes, at));
        arrays = at + 8;
        at = arrays + arrayCount * sizeof(vfFormats::ArrayPart);
        imageCount = static_cast<std::size_t>(numberAt<std::uint64_t>(bytes, at));
        images = at + 8;
        lists = images + imageCount * sizeof(vfFormats::ImagePart);
    }

    vfFormats::Trailer trailer;
    std::size_t texts = 0;
    std::size_t arrays = 0; ///< the first
    std::size_t arrayCount = 0;
    std::size_t images = 0;
    std::size_t imageCount = 0;
    std::size_t lists = 0;
};

TEST_F(ReadJobs, AReaderThatEndsBeforeItsArraysAreTakenIsAReason)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 20000);
    const Sending reader(path);
    EXPECT_TRUE(receive(reader.bytes).scene);
    std::atomic<int> copies{0};
    const auto fails = [&copies](std::uint64_t address, void* to, std::size_t size) {
        return ++copies < 2 && copyHere(address, to, size);
    };
    const ReadOutcome outcome = receive(reader.bytes, {std::uint64_t(1) << 32, fails});
    EXPECT_FALSE(outcome.scene);
    EXPECT_THAT(outcome.reason, HasSubstr("did not hand it on whole"));
    EXPECT_FALSE(receive(reader.bytes, {1000, copyHere}).scene) << "more than it has";
    EXPECT_FALSE(receive(reader.bytes, {}).scene) << "the large arrays are missing";
}

TEST_F(ReadJobs, AReaderThatTellsNonsenseOfItsArraysHarmsNobody)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 20000);
    const Sending reader(path);
    const std::string sound = reader.bytes;
    const Parts parts(sound);
    ASSERT_GE(parts.arrayCount, 2u);
    std::size_t refused = 0;
    for (std::size_t at = parts.arrays - 8; at < parts.arrays + 2 * sizeof(vfFormats::ArrayPart); at += 8) {
        const auto right = numberAt<std::uint64_t>(sound, at);
        for (const std::uint64_t wrong :
             {std::uint64_t(0), right + 4, right + 12, right + (std::uint64_t(1) << 40), ~std::uint64_t(0),
              ~std::uint64_t(3), std::uint64_t(4096), std::uint64_t(1) << 59})
        {
            std::string spoilt = sound;
            overwrite(spoilt, at, wrong);
            const ReadOutcome outcome = receive(spoilt);
            refused += !outcome.scene;
            EXPECT_LE(outcome.scene ? Contents(*outcome.scene).text.size() : 0, 4u * 1024 * 1024);
        }
    }
    EXPECT_GT(refused, 30u);
    EXPECT_TRUE(receive(sound).scene);
}

TEST_F(ReadJobs, TextsAndListsWithoutEndAreAReason)
{
    ReadOutcome sent;
    sent.reason = "a reason";
    sent.warnings = {"one", "two"};
    const Sending reader(sent);
    const std::string sound = reader.bytes;
    EXPECT_EQ("a reason", receive(sound).reason);
    // The length of the reason, its 8 letters, the number of warnings, the length of the first.
    const std::size_t texts = Parts(sound).texts;
    for (const std::size_t at : {texts, texts + 16, texts + 24}) {
        for (const std::uint64_t count : {~std::uint64_t(0), std::uint64_t(1) << 59, std::uint64_t(1) << 63})
        {
            std::string spoilt = sound;
            overwrite(spoilt, at, count);
            EXPECT_THAT(receive(spoilt).reason, HasSubstr("did not hand it on whole"));
        }
    }
    for (std::size_t number = 2; number <= sizeof(vfFormats::Trailer) / 8; ++number) { // the last is a flag
        std::string spoilt = sound;
        overwrite(spoilt, sound.size() - number * 8, ~std::uint64_t(0) - 7);
        EXPECT_FALSE(receive(spoilt).scene);
    }
}

TEST_F(ReadJobs, TextsBeyondAllMeasureAreCut)
{
    ReadOutcome sent;
    sent.reason = std::string(10000000, 'x');
    sent.warnings.assign(100000, "y");
    const ReadOutcome outcome = receive(Sending(sent).bytes);
    EXPECT_EQ(vfFormats::longestText, outcome.reason.size());
    EXPECT_EQ(vfFormats::mostTexts, outcome.warnings.size());
}

/// @return what comes of a scene that another process has
ReadOutcome sendScene(const osg::ref_ptr<osg::Node>& scene)
{
    ReadOutcome sent;
    sent.scene = scene;
    const Sending reader(sent);
    return receive(reader.bytes);
}

TEST_F(ReadJobs, AReaderThatLeadsBeyondItsArraysIsRefused)
{
    const auto scene = [](osg::PrimitiveSet* primitives) {
        const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
        geometry->setVertexArray(new osg::Vec3Array(osg::Array::BIND_PER_VERTEX, 300));
        geometry->addPrimitiveSet(primitives);
        const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
        geode->addDrawable(geometry);
        return geode;
    };
    const auto refused = [](const osg::ref_ptr<osg::Node>& sent) { return !sendScene(sent).scene; };
    const auto indices = [](unsigned int last) {
        const osg::ref_ptr<osg::DrawElementsUInt> elements = new osg::DrawElementsUInt(GL_TRIANGLES, 300);
        elements->back() = last;
        return elements;
    };
    EXPECT_FALSE(refused(scene(indices(299))));
    EXPECT_TRUE(refused(scene(indices(300))));
    EXPECT_TRUE(refused(scene(indices(0x7f000000))));
    EXPECT_TRUE(refused(scene(new osg::DrawArrays(GL_TRIANGLES, 0, 0x7f000000))));
}

TEST_F(ReadJobs, AnImageThatIsNotWhatItsBytesAreIsRefused)
{
    const Sending reader(VELAFORGE_SOURCE_DIR "/models/sailboat.obj");
    const std::string sound = reader.bytes;
    ASSERT_TRUE(receive(sound).scene);
    const Parts parts(sound);
    ASSERT_GE(parts.imageCount, 1u);
    // After size, place, address and names: which row is first, width, height, depth, formats, type, packing, mipmaps.
    const std::size_t image = parts.images + sizeof(vfFormats::PlacePart) + 8;
    const std::size_t whole = Contents(*receive(sound).scene).text.size();
    for (std::size_t at = image; at < image + 52; at += 4) {
        for (const std::uint32_t wrong : {0u, 0x7fffffffu, 0xffffffffu, 40000u, 3u}) {
            std::string spoilt = sound;
            overwrite(spoilt, at, wrong);
            const ReadOutcome outcome = receive(spoilt);
            // A smaller one is within the bytes.
            EXPECT_LE(outcome.scene ? Contents(*outcome.scene).text.size() : 0, whole);
        }
    }
    std::string none = sound;
    overwrite(none, parts.images - 8, std::uint64_t(0));
    EXPECT_FALSE(receive(none).scene) << "an image without its bytes";
}

TEST_F(ReadJobs, WhatIsNotHandedOnWholeIsAReason)
{
    for (const std::size_t size : {std::size_t(0), std::size_t(1), std::size_t(4096), std::size_t(5000)}) {
        for (const char filling : {'\0', '\xff', '\x10'}) {
            const ReadOutcome outcome = receive(std::string(size, filling));
            EXPECT_FALSE(outcome.scene);
            EXPECT_THAT(outcome.reason, HasSubstr("did not hand it on whole"));
        }
    }
    EXPECT_FALSE(vfFormats::receiveScene(nullptr, 0).scene);
}

TEST_F(ReadJobs, ATransferThatIsNotAsItWasSentIsASceneOrAReason)
{
    const std::string path = vfTest::signpost("osgb");
    const std::string bytes = Sending(path).bytes;
    EXPECT_TRUE(receive(bytes).scene);
    vfTest::Search search("spoilt transfers", 300);
    while (search.next())
        receive(vfTest::Spoiler(bytes, search.seed()).spoil());
}
