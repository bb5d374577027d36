// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"
#include "support/Models.h"
#include "support/Reading.h"
#include <velaforge/documents/Recovery.h>
#include <velaforge/scene/SceneCommands.h>

#include <velaforge/formats/FormatList.h>

#include <osg/Geode>

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <new>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using vfApplication::Recovery;
using vfViewer::ModelDocument;

namespace {

class ModelRecovery : public vfTest::Reading
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
            Recovery recovery(place(), ".osgb");
            ModelDocument one;
            ModelDocument other;
            fill(one, "one");
            fill(other, "other");
            while (!recovery.keep(one, one.recoverySnapshot()))
                usleep(1000);
            while (!recovery.keep(other, other.recoverySnapshot()))
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

TEST_F(ModelRecovery, WhatAProgramLeftBehindIsFoundByTheNext)
{
    crash();
    Recovery next(place(), ".osgb");
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

TEST_F(ModelRecovery, OnlyWhatChangedIsWrittenAgain)
{
    Recovery recovery(place(), ".osgb");
    ModelDocument document;
    fill(document, "model");
    ASSERT_TRUE(recovery.keep(document, document.recoverySnapshot()));
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
    EXPECT_TRUE(recovery.keep(document, document.recoverySnapshot()));
    recovery.finishWriting();
    EXPECT_EQ(before, inode());
    document.scene().getChild(0)->setName("changed");
    document.getModelScene().changed();
    for (int i = 0; i < 1000 && !recovery.keep(document, document.recoverySnapshot()); ++i)
        usleep(10000);
    recovery.finishWriting();
    EXPECT_NE(before, inode());
    EXPECT_EQ("changed", read(copy).scene->getName());
}

TEST_F(ModelRecovery, TheDocumentMayChangeWhileItIsWritten)
{
    Recovery recovery(place(), ".osgb");
    ModelDocument document;
    fill(document, "model");
    for (int i = 0; i < 20; ++i) {
        document.getModelScene().changed();
        recovery.keep(document, document.recoverySnapshot());
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

TEST_F(ModelRecovery, TheModelMayMoveWhileItIsWritten)
{
    if (!vfFormats::hasAssimp())
        GTEST_SKIP() << "built without Assimp";
    ModelDocument document;
    document.getModelScene().setModel(read(VELAFORGE_SOURCE_DIR "/models/windmill.gltf").scene);
    document.setFilename("/somewhere/windmill.gltf", false);
    document.getModelScene().changed();
    vfScene::ModelAnimation& animation = document.getAnimation();
    animation.reset();
    Recovery recovery(place(), ".osgb");
    ASSERT_TRUE(recovery.keep(document, document.recoverySnapshot()));
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
