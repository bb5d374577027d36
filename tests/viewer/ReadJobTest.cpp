// SPDX-License-Identifier: MIT
// Files that are read in a process of their own.
#include "Reading.h"

#include "reading/AssimpLibrary.h"
#include "reading/SceneTransfer.h"
#include "support/LargeModels.h"
#include "support/Models.h"
#include "support/Search.h"
#include "support/Spoiler.h"

#include <osg/Geometry>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::HasSubstr;
using vfViewer::ReadJob;
using vfViewer::ReadKind;
using vfViewer::ReadLimits;
using vfViewer::ReadOutcome;

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

/// @return the processes that read files, in the order in which they were made
std::vector<pid_t> readers()
{
    std::vector<pid_t> all;
    for (const pid_t host : childrenOf("self")) {
        for (const pid_t reader : childrenOf(std::to_string(host)))
            all.push_back(reader);
    }
    return all;
}

/// Waits for a condition, two minutes at most, which ends a test that would wait for ever.
template <class Condition>
bool waitFor(Condition condition)
{
    for (int i = 0; i < 12000 && !condition(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return condition();
}

} // namespace

TEST_F(ReadJobs, EveryFormatComesOverAsItWasRead)
{
    std::vector<std::string> formats = vfTest::signpostFormats();
    for (const std::string& format : formats) {
        const ReadOutcome here = vfViewer::readModel(vfTest::signpost(format));
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
    EXPECT_EQ(Contents(*vfViewer::readModel(VELAFORGE_SOURCE_DIR "/models/sailboat.obj").scene).text,
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
#endif

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
    if (vfViewer::hasAssimp()) {
        EXPECT_EQ(std::set<std::string>{"signpost.bin"}, others(vfTest::signpost("gltf")));
    }
}

TEST_F(ReadJobs, AProcessThatSomebodyEndedIsReplaced)
{
    EXPECT_TRUE(read(vfTest::signpost("stl")).scene);
    const std::vector<pid_t> hosts = childrenOf("self");
    ASSERT_EQ(1u, hosts.size());
    kill(hosts.front(), SIGKILL);
    EXPECT_TRUE(waitFor([&] {
        std::ifstream state("/proc/" + std::to_string(hosts.front()) + "/stat");
        std::string word;
        state >> word >> word >> word;
        return word.empty() || word == "Z";
    }));
    const ReadOutcome outcome = read(vfTest::signpost("stl"));
    EXPECT_TRUE(outcome.scene) << outcome.reason;
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

/// From here on this thread, and all that it starts, may not look into other processes.
void forbidLooking()
{
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_process_vm_readv, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
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
    ASSERT_TRUE(vfViewer::canLookInto(getpid()));
    forbidLooking();
    ASSERT_FALSE(vfViewer::canLookInto(getpid()));
    const ReadOutcome written = read(path);
    ASSERT_TRUE(written.scene) << written.reason;
    const ReadOutcome inPlace = vfViewer::readModel(path);
    EXPECT_EQ(Contents(*inPlace.scene).text, Contents(*looked.scene).text);
    EXPECT_EQ(Contents(*inPlace.scene).text, Contents(*written.scene).text);
}

/// A process that has handed a large model on, and waits.
class HandingOn
{
public:
    explicit HandingOn(const std::string& model) : file(memfd_create("scene", MFD_CLOEXEC))
    {
        int ends[2];
        EXPECT_EQ(0, pipe(ends));
        process = fork();
        if (process == 0) {
            ReadOutcome outcome = vfViewer::readModel(model);
            vfViewer::HandOver handOver(file);
            const long long written = handOver.put(outcome);
            if (::write(ends[1], &written, sizeof(written)) != sizeof(written))
                _exit(1);
            while (true)
                pause();
        }
        EXPECT_EQ(static_cast<ssize_t>(sizeof(size)), ::read(ends[0], &size, sizeof(size)));
        close(ends[0]);
        close(ends[1]);
    }
    ~HandingOn()
    {
        end();
        close(file);
    }
    HandingOn(const HandingOn&) = delete;
    HandingOn& operator=(const HandingOn&) = delete;

    void end()
    {
        if (process <= 0)
            return;
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
        process = 0;
    }

    ReadOutcome take(int from) const
    {
        const std::atomic<bool> stop{false};
        return vfViewer::receiveOutcome(file, size, from, stop);
    }

    int file;
    pid_t process = 0;
    long long size = 0;
};

TEST_F(ReadJobs, AReaderThatEndsBeforeItsArraysAreTakenIsAReason)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 20000);
    HandingOn reader(path);
    EXPECT_TRUE(reader.take(reader.process).scene);
    const int process = reader.process;
    reader.end();
    const ReadOutcome outcome = reader.take(process);
    EXPECT_FALSE(outcome.scene);
    EXPECT_THAT(outcome.reason, HasSubstr("did not hand it on whole"));
}

TEST_F(ReadJobs, AReaderThatTellsNonsenseOfItsArraysHarmsNobody)
{
    const std::string path = directory.file("hills.stl");
    vfTest::writeHills(path, 20000);
    const HandingOn reader(path);
    // Behind a word of its own and two numbers there is told where each of the two arrays is.
    std::string end(4096, ' ');
    const long long endAt = reader.size - static_cast<long long>(end.size());
    ASSERT_EQ(static_cast<ssize_t>(end.size()), pread(reader.file, end.data(), end.size(), endAt));
    const std::size_t told = end.find("1enecSfv");
    ASSERT_NE(std::string::npos, told);
    const long long arraysAt = endAt + static_cast<long long>(told) + 24;
    std::size_t refused = 0;
    for (long long at = arraysAt; at < arraysAt + 64; at += 8) {
        std::uint64_t right = 0;
        ASSERT_EQ(8, pread(reader.file, &right, 8, at));
        for (const std::uint64_t wrong :
             {std::uint64_t(0), right + 4, right + 12, right + (std::uint64_t(1) << 40), ~std::uint64_t(0),
              ~std::uint64_t(3), std::uint64_t(4096)})
        {
            ASSERT_EQ(8, pwrite(reader.file, &wrong, 8, at));
            const ReadOutcome outcome = reader.take(reader.process);
            refused += !outcome.scene;
            EXPECT_LE(outcome.scene ? Contents(*outcome.scene).text.size() : 0, 4u * 1024 * 1024);
        }
        ASSERT_EQ(8, pwrite(reader.file, &right, 8, at));
    }
    EXPECT_GT(refused, 10u);
    EXPECT_TRUE(reader.take(reader.process).scene);
}

TEST_F(ReadJobs, WhatIsNotHandedOnWholeIsAReason)
{
    const std::atomic<bool> stop{false};
    for (const std::size_t size : {std::size_t(1), std::size_t(4096), std::size_t(5000)}) {
        for (const char filling : {'\0', '\xff', '\x10'}) {
            const int file = memfd_create("scene", MFD_CLOEXEC);
            const std::string bytes(size, filling);
            ASSERT_EQ(static_cast<ssize_t>(size), write(file, bytes.data(), size));
            for (const long long told :
                 {0LL, static_cast<long long>(size), static_cast<long long>(size) + 1000000}) {
                const ReadOutcome outcome = vfViewer::receiveOutcome(file, told, 0, stop);
                EXPECT_FALSE(outcome.scene);
                EXPECT_THAT(outcome.reason, HasSubstr("did not hand it on whole"));
            }
            close(file);
        }
    }
}

TEST_F(ReadJobs, ATransferThatIsNotAsItWasSentIsASceneOrAReason)
{
    const std::string path = vfTest::signpost("osgb");
    const int healthyFile = memfd_create("scene", MFD_CLOEXEC);
    ReadOutcome healthy = vfViewer::readModel(path);
    ASSERT_TRUE(healthy.scene);
    vfViewer::HandOver handOver(healthyFile);
    const long long size = handOver.put(healthy);
    ASSERT_GT(size, vfViewer::transferHeaderSize);
    ASSERT_TRUE(handOver.putArrays());
    std::string bytes(static_cast<std::size_t>(lseek(healthyFile, 0, SEEK_END)), ' ');
    ASSERT_EQ(static_cast<ssize_t>(bytes.size()), pread(healthyFile, bytes.data(), bytes.size(), 0));
    close(healthyFile);
    const std::atomic<bool> stop{false};
    vfTest::Search search("spoilt transfers", 25);
    while (search.next()) {
        // What reads the scene stands no other damage than cuts yet: "./dev soak" finds where.
        const std::string spoilt = search.isSoak() ? vfTest::Spoiler(bytes, search.seed()).spoil()
                                                   : bytes.substr(0, bytes.size() * search.seed() / 26);
        const int file = memfd_create("scene", MFD_CLOEXEC);
        ASSERT_EQ(static_cast<ssize_t>(spoilt.size()), pwrite(file, spoilt.data(), spoilt.size(), 0));
        const long long told = std::min<long long>(size, static_cast<long long>(spoilt.size()));
        const ReadOutcome outcome = vfViewer::receiveOutcome(file, told, 0, stop);
        EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty());
        close(file);
    }
}
