// SPDX-License-Identifier: MIT
#include "model/Recovery.h"
#include "model/ModelDocument.h"
#include "support/Models.h"
#include "support/Reading.h"
#include <velaforge/scene/SceneCommands.h>

#include <velaforge/formats/FormatList.h>

#include <osg/Geode>
#include <osgDB/Registry>

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <new>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfViewer::ModelDocument;
using vfViewer::Recovery;

namespace {

class Recoveries : public vfTest::Reading
{
protected:
    std::string place() const { return directory.file("recovery"); }

    /// Opens nothing and shows nothing, but is a document.
    static void fill(ModelDocument& document, const std::string& name)
    {
        const osg::ref_ptr<osg::Group> model = new osg::Group;
        model->setName(name);
        model->addChild(read(vfTest::signpost("obj")).scene);
        document.getModelScene().setModel(model);
        document.setFilename("/somewhere/" + name + ".obj", false);
        document.getModelScene().changed();
    }

    std::size_t countFiles() const
    {
        std::error_code problem;
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(place(), problem), fs::directory_iterator()));
    }

    /// @return the copy that is kept, empty without one
    std::string copyThere() const
    {
        for (const auto& entry : fs::directory_iterator(place())) {
            if (entry.path().extension() == ".osgb")
                return entry.path().string();
        }
        return {};
    }

    /// Another program keeps two models and is ended from one moment to the other.
    void crash()
    {
        const pid_t child = fork();
        if (child == 0) {
            Recovery recovery(place());
            ModelDocument one;
            ModelDocument other;
            fill(one, "one");
            fill(other, "other");
            while (!recovery.keep(one))
                usleep(1000);
            while (!recovery.keep(other))
                usleep(1000);
            recovery.finishWriting();
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
};

} // namespace

TEST_F(Recoveries, WhatAProgramLeftBehindIsFoundByTheNext)
{
    crash();
    Recovery next(place());
    const auto found = next.findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("/somewhere/one.obj", found[0].original);
    EXPECT_EQ("/somewhere/other.obj", found[1].original);
    EXPECT_NEAR(static_cast<double>(time(nullptr)), static_cast<double>(found[0].time), 60);
    const auto outcome = read(found[0].copy);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ("one", outcome.scene->getName());
    Recovery::discard(found[0]);
    ASSERT_EQ(1u, next.findLeftBehind().size());
    Recovery::discard(found[1]);
    EXPECT_TRUE(next.findLeftBehind().empty());
    EXPECT_EQ(0u, countFiles());
}

TEST_F(Recoveries, TheFileOfAModelIsFoundFromAnotherDirectory)
{
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    const pid_t child = fork();
    if (child == 0) {
        Recovery recovery(place());
        ModelDocument document;
        fill(document, "one");
        document.setFilename("one.obj", false);
        document.setDocumentSaved(true);
        ModelDocument unnamed;
        fill(unnamed, "unnamed1");
        unnamed.setFilename("unnamed1", false);
        recovery.keepNow(document);
        recovery.keepNow(unnamed);
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    ASSERT_EQ(0, chdir("/"));
    const auto found = Recovery(place()).findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ(directory.file("one.obj"), found[0].original);
    EXPECT_TRUE(found[0].hasFile());
    EXPECT_EQ("unnamed1", found[1].original);
    EXPECT_FALSE(found[1].hasFile());
}

TEST_F(Recoveries, AFileThatAnotherProgramChangedMeanwhileIsNoticed)
{
    const std::string path = directory.write("one.obj", "v 0 0 0\n");
    const pid_t child = fork();
    if (child == 0) {
        Recovery recovery(place());
        ModelDocument document;
        fill(document, "one");
        document.setFilename(path, false);
        document.setDocumentSaved(true);
        document.setFileIdentity(vfViewer::FileIdentity::of(path));
        recovery.keepNow(document);
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    const auto found = Recovery(place()).findLeftBehind();
    ASSERT_EQ(1u, found.size());
    EXPECT_FALSE(found[0].isOriginalChanged());
    // As long as before, and moved into its place.
    const std::string other = directory.write("other.obj", "v 0 0 1\n");
    ASSERT_EQ(0, rename(other.c_str(), path.c_str()));
    EXPECT_TRUE(found[0].isOriginalChanged());
    ASSERT_EQ(0, unlink(path.c_str()));
    EXPECT_TRUE(found[0].isOriginalChanged());
}

TEST_F(Recoveries, ACopyOfAnEarlierVersionIsFoundAsBefore)
{
    crash();
    for (const auto& entry : fs::directory_iterator(place())) {
        if (entry.path().extension() == ".path")
            std::ofstream(entry.path()) << "one.obj";
    }
    const auto found = Recovery(place()).findLeftBehind();
    ASSERT_EQ(2u, found.size());
    EXPECT_EQ("one.obj", found[0].original);
    EXPECT_FALSE(found[0].hasFile());
    EXPECT_FALSE(found[0].isOriginalChanged());
}

TEST_F(Recoveries, WhatARunningProgramKeepsIsItsOwn)
{
    Recovery recovery(place());
    ModelDocument document;
    fill(document, "model");
    EXPECT_TRUE(recovery.keep(document));
    recovery.finishWriting();
    EXPECT_EQ(std::vector<const ModelDocument*>{&document}, recovery.getKept());
    EXPECT_TRUE(recovery.findLeftBehind().empty());
    EXPECT_TRUE(Recovery(place()).findLeftBehind().empty());
    EXPECT_EQ(3u, countFiles()); // the lock, the copy, and what it is of
    struct stat status;
    ASSERT_EQ(0, stat(place().c_str(), &status));
    EXPECT_EQ(0700u, status.st_mode & 0777u);
    recovery.drop(&document);
    EXPECT_EQ(1u, countFiles());
    EXPECT_TRUE(recovery.getKept().empty());
    recovery.drop(&document);
}

TEST_F(Recoveries, AProgramThatEndsLeavesNothingBehind)
{
    {
        Recovery recovery(place());
        ModelDocument document;
        fill(document, "model");
        EXPECT_TRUE(recovery.keep(document));
    }
    EXPECT_EQ(0u, countFiles());
    const Recovery idle(directory.file("never"));
    EXPECT_TRUE(idle.findLeftBehind().empty());
    EXPECT_FALSE(fs::exists(directory.file("never")));
}

TEST_F(Recoveries, OnlyWhatChangedIsWrittenAgain)
{
    Recovery recovery(place());
    ModelDocument document;
    fill(document, "model");
    ASSERT_TRUE(recovery.keep(document));
    recovery.finishWriting();
    const std::string copy = copyThere();
    ASSERT_NE("", copy);
    const auto inode = [&copy] {
        struct stat status;
        return stat(copy.c_str(), &status) == 0 ? status.st_ino : 0;
    };
    // Held open, so that its number is not given to another.
    const std::ifstream held(copy);
    const auto before = inode();
    EXPECT_TRUE(recovery.keep(document));
    recovery.finishWriting();
    EXPECT_EQ(before, inode());
    document.scene().getChild(0)->setName("changed");
    document.getModelScene().changed();
    for (int i = 0; i < 1000 && !recovery.keep(document); ++i)
        usleep(10000);
    recovery.finishWriting();
    EXPECT_NE(before, inode());
    EXPECT_EQ("changed", read(copy).scene->getName());
}

TEST_F(Recoveries, ADocumentInThePlaceOfAnotherIsNotTakenForIt)
{
    Recovery recovery(place());
    alignas(ModelDocument) unsigned char room[sizeof(ModelDocument)];
    auto* first = new (room) ModelDocument;
    fill(*first, "first");
    ASSERT_TRUE(recovery.keep(*first));
    recovery.finishWriting();
    EXPECT_FALSE(recovery.isWriting());
    first->~ModelDocument();
    auto* second = new (room) ModelDocument;
    fill(*second, "second");
    for (int i = 0; i < 1000 && !recovery.keep(*second); ++i)
        usleep(10000);
    recovery.finishWriting();
    EXPECT_EQ("second", read(copyThere()).scene->getName());
    recovery.drop(second);
    second->~ModelDocument();
}

TEST_F(Recoveries, WhatCannotBeWrittenLeavesTheCopyBefore)
{
    directory.write("file", "");
    Recovery blocked(directory.file("file/recovery"));
    ModelDocument document;
    fill(document, "model");
    EXPECT_FALSE(blocked.keep(document));
    EXPECT_TRUE(blocked.getKept().empty());

    Recovery recovery(place());
    ASSERT_TRUE(recovery.keep(document));
    recovery.finishWriting();
    const std::string copy = copyThere();
    const std::string contents = vfTest::readFile(copy);
    fs::create_directory(copy + ".part"); // so that the draft cannot be made
    document.getModelScene().changed();
    for (int i = 0; i < 1000 && !recovery.keep(document); ++i)
        usleep(10000);
    recovery.finishWriting();
    EXPECT_EQ(contents, vfTest::readFile(copy));
    fs::remove(copy + ".part");
}

TEST_F(Recoveries, AWriterThatRunsOutOfMemoryCostsTheCopyAndNotTheProgram)
{
    struct Exhausted : osgDB::ReaderWriter
    {
        Exhausted() { supportsExtension("osgb", "no memory"); }
        WriteResult writeNode(const osg::Node&, std::ostream&, const osgDB::Options*) const override
        {
            throw std::bad_alloc();
        }
    };
    ModelDocument document;
    fill(document, "boat");
    Recovery recovery(place());
    ASSERT_TRUE(recovery.keepNow(document));
    const std::string before = vfTest::readFile(copyThere());
    const osg::ref_ptr<Exhausted> exhausted = new Exhausted;
    osgDB::Registry::instance()->getReaderWriterList().insert(
        osgDB::Registry::instance()->getReaderWriterList().begin(), exhausted);
    document.getModelScene().changed();
    recovery.keepNow(document);
    EXPECT_EQ(before, vfTest::readFile(copyThere()));
    osgDB::Registry::instance()->removeReaderWriter(exhausted);
    document.getModelScene().changed();
    EXPECT_TRUE(recovery.keepNow(document));
}

TEST_F(Recoveries, TheDocumentMayChangeWhileItIsWritten)
{
    Recovery recovery(place());
    ModelDocument document;
    fill(document, "model");
    for (int i = 0; i < 20; ++i) {
        document.getModelScene().changed();
        recovery.keep(document);
        osg::ref_ptr<vfScene::SceneCommand> flip =
            new vfScene::FlipNormalsCommand(document.getModelScene(), *document.scene().getChild(0));
        EXPECT_TRUE(flip->Do(vfBase::VfVariant()));
        osg::ref_ptr<vfScene::SceneCommand> hide =
            new vfScene::ShowCommand(document.getModelScene(), *document.scene().getChild(0), i % 2 == 0);
        EXPECT_TRUE(hide->Do(vfBase::VfVariant()));
        usleep(2000);
    }
    recovery.finishWriting();
    EXPECT_TRUE(recovery.findLeftBehind().empty());
}

TEST_F(Recoveries, TheModelMayMoveWhileItIsWritten)
{
    if (!vfFormats::hasAssimp())
        GTEST_SKIP() << "built without Assimp";
    ModelDocument document;
    document.getModelScene().setModel(read(VELAFORGE_SOURCE_DIR "/models/windmill.gltf").scene);
    document.setFilename("/somewhere/windmill.gltf", false);
    document.getModelScene().changed();
    vfScene::ModelAnimation& animation = document.getAnimation();
    animation.reset();
    Recovery recovery(place());
    ASSERT_TRUE(recovery.keep(document));
    for (int i = 0; recovery.isWriting() || i < 10; ++i)
        animation.setTime(0.01 * i);
    recovery.finishWriting();
    const auto outcome = read(copyThere());
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    ModelDocument recovered;
    recovered.getModelScene().setModel(outcome.scene);
    recovered.getAnimation().reset();
    EXPECT_EQ(animation.getNames(), recovered.getAnimation().getNames());
    EXPECT_DOUBLE_EQ(animation.getDuration(), recovered.getAnimation().getDuration());
    recovered.getAnimation().setTime(0.3);
    animation.setTime(0.3);
    EXPECT_LT(0, recovered.scene().getBound().radius());
    EXPECT_NEAR(document.scene().getBound().radius(), recovered.scene().getBound().radius(), 1e-4);
}
