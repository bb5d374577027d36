// SPDX-License-Identifier: MIT
#include "support/Models.h"
#include "support/Reading.h"

#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/formats/readers/SideFiles.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::ReadOutcome;
using vfFormats::SideFiles;

namespace {

class SideFilesOfModels : public vfTest::Reading
{
protected:
    SideFilesOfModels()
    {
        for (const char* folder : {"set/boat/textures", "set/sails", "set/.hidden", "set/boat/.hidden"})
            fs::create_directories(directory.file(folder));
        model = directory.write("set/boat/boat.obj", "v 0 0 0\n");
    }

    std::string model;
};

/// The files that are there, as the program finds them for a process that reads the model.
struct Reads : SideFiles
{
    explicit Reads(const std::string& model) : SideFiles(model, vfFormats::findSideFiles(model)) {}
};

const char* const triangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nusemtl a\nf 1/1 2/1 3/1\n";

/// A triangle whose points are the first 36 bytes of another file.
std::string gltf(const std::string& uri)
{
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],)"
           R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],)"
           R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],)"
           R"("bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":36}],"buffers":[{"uri":")" +
           uri + R"(","byteLength":36}]})";
}

} // namespace

TEST_F(SideFilesOfModels, LieInTheFolderOfTheModelBelowItAndBesideIt)
{
    const std::vector<const char*> admitted = {"set/boat/a.mtl", "set/boat/textures/a.png", "set/sails/a.png",
                                               "set/a.png", "set/boat/wing.obj"};
    const std::vector<const char*> others = {"a.png",
                                             "set/.hidden/a.png",
                                             "set/boat/.a.png",
                                             "set/boat/.hidden/a.png",
                                             "set/boat/diary.txt",
                                             "set/boat/a.bin"};
    for (const char* name : admitted)
        directory.write(name, "x");
    for (const char* name : others)
        directory.write(name, "x");
    const Reads reading(model);
    EXPECT_TRUE(SideFiles::isAdmitted(model));
    for (const char* name : admitted)
        EXPECT_TRUE(SideFiles::isAdmitted(directory.file(name))) << name;
    EXPECT_TRUE(SideFiles::isAdmitted(directory.file("set/boat/../sails/a.png")));
    for (const char* name : others)
        EXPECT_FALSE(SideFiles::isAdmitted(directory.file(name))) << name;
    for (const char* path : {"/etc/passwd", "/proc/self/mem", "/dev/zero", "missing"})
        EXPECT_FALSE(SideFiles::isAdmitted(path)) << path;
    EXPECT_FALSE(SideFiles::isAdmitted(directory.file("set/boat"))) << "a folder";
}

TEST_F(SideFilesOfModels, WhatLinksAndPipesLeadToIsNotAdmitted)
{
    fs::create_symlink("/etc/passwd", directory.file("set/boat/link.png"));
    fs::create_directory_symlink("/etc", directory.file("set/boat/etc"));
    mkfifo(directory.file("set/boat/pipe.png").c_str(), 0600);
    const Reads reading(model);
    for (const char* name : {"set/boat/link.png", "set/boat/etc/passwd", "set/boat/pipe.png"})
        EXPECT_FALSE(SideFiles::isAdmitted(directory.file(name))) << name;
}

TEST_F(SideFilesOfModels, AModelThatIsALinkHasTheFilesOfBothPlaces)
{
    fs::create_directories(directory.file("other/place"));
    fs::create_symlink(model, directory.file("other/place/boat.obj"));
    directory.write("other/place/a.mtl", "x");
    directory.write("set/boat/b.mtl", "x");
    const Reads reading(directory.file("other/place/boat.obj"));
    EXPECT_TRUE(SideFiles::isAdmitted(directory.file("other/place/a.mtl")));
    EXPECT_TRUE(SideFiles::isAdmitted(directory.file("set/boat/b.mtl")));
    EXPECT_TRUE(SideFiles::isAdmitted(model));
}

TEST_F(SideFilesOfModels, FoldersOfOthersAreNotAdmitted)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give a folder away";
    ASSERT_EQ(0, chown(directory.file("set").c_str(), 12345, 12345));
    directory.write("set/boat/a.png", "x");
    directory.write("set/sails/a.png", "x");
    const Reads reading(model);
    EXPECT_TRUE(SideFiles::isAdmitted(directory.file("set/boat/a.png")));
    EXPECT_FALSE(SideFiles::isAdmitted(directory.file("set/sails/a.png")));
}

TEST_F(SideFilesOfModels, LinksToFilesThatAreAdmittedMayBeNamed)
{
    const std::string sail = directory.write("set/sails/sail.png", "x");
    fs::create_symlink(sail, directory.file("set/boat/link.png"));
    fs::create_directory_symlink(directory.file("set/sails"), directory.file("set/boat/linked"));
    fs::create_directory_symlink(directory.file("set"), directory.file("set/boat/round"));
    const Reads reading(model);
    for (const char* name : {"link.png", "linked/sail.png", "round/sails/sail.png"})
        EXPECT_EQ(directory.file("set/boat/") + name, SideFiles::find(name));
}

TEST_F(SideFilesOfModels, AreLookedForInNearFoldersOnly)
{
    fs::create_directories(directory.file("set/boat/1/2/3/4/5"));
    fs::create_directories(directory.file("set/sails/1/2"));
    std::vector<std::string> near;
    for (const char* name : {"set/boat/1/2/3/4/a.png", "set/sails/1/a.png"})
        near.push_back(directory.write(name, "x"));
    for (const char* name : {"set/boat/1/2/3/4/5/a.png", "set/sails/1/2/a.png"})
        directory.write(name, "x");
    EXPECT_THAT(vfFormats::findSideFiles(model), testing::UnorderedElementsAre(model, near[0], near[1]));
    for (int i = 0; i < 300; ++i) {
        const std::string folder = "set/boat/" + std::to_string(1000 + i);
        fs::create_directory(directory.file(folder));
        directory.write(folder + "/a.png", "x");
    }
    EXPECT_GT(vfFormats::findSideFiles(model).size(), 150u);
    EXPECT_LT(vfFormats::findSideFiles(model).size(), 210u);
}

TEST_F(SideFilesOfModels, FarAwayAreReadWhenTheModelNamesThem)
{
    fs::create_directories(directory.file("set/sails/1/2/3"));
    fs::copy_file(VELAFORGE_SOURCE_DIR "/models/sail.png", directory.file("set/sails/1/2/3/sail.png"));
    directory.write("set/sails/1/2/3/far.mtl", "newmtl a\nmap_Kd sail.png\n");
    directory.write("set/boat/boat.obj", std::string("mtllib ../sails/1/2/3/far.mtl\n") + triangle);
    const ReadOutcome outcome = read(model);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, IsEmpty());
    EXPECT_THAT(outcome.files, testing::UnorderedElementsAre(directory.file("set/sails/1/2/3/far.mtl"),
                                                             directory.file("set/sails/1/2/3/sail.png")));
    EXPECT_THAT(
        vfFormats::admittedOf(model, {"/etc/passwd", directory.write("a.png", "x"), directory.file("set")}),
        IsEmpty());
}

TEST_F(SideFilesOfModels, OfModelsThatNameNoFilesAreNotLookedFor)
{
    directory.write("set/boat/a.png", "x");
    EXPECT_THAT(vfFormats::findSideFiles(directory.write("set/boat/a.stl", "x")), IsEmpty());
    EXPECT_THAT(vfFormats::findSideFiles(directory.write("set/boat/a.unknown", "x")), IsEmpty());
    EXPECT_THAT(vfFormats::findSideFiles("/missing/a.obj"), IsEmpty());
}

TEST_F(SideFilesOfModels, WithoutAModelThereIsNoRule)
{
    EXPECT_FALSE(SideFiles::isInForce());
    EXPECT_TRUE(SideFiles::isAdmitted("/etc/passwd"));
    {
        const Reads outer(model);
        {
            const Reads inner(directory.write("set/sails/b.obj", "x"));
            EXPECT_TRUE(SideFiles::isAdmitted(directory.file("set/sails/b.obj")));
        }
        EXPECT_TRUE(SideFiles::isInForce());
        EXPECT_FALSE(SideFiles::isAdmitted("/etc/passwd"));
    }
    EXPECT_FALSE(SideFiles::isInForce());
}

TEST_F(SideFilesOfModels, AreFoundUnderTheNamesThatOtherComputersGaveThem)
{
    const std::string inTextures = directory.write("set/boat/textures/wood.png", "x");
    const std::string inSails = directory.write("set/sails/sail.png", "x");
    const Reads reading(model);
    EXPECT_EQ(inTextures, SideFiles::find("textures/wood.png"));
    EXPECT_EQ(inTextures, SideFiles::find("C:\\work\\textures\\wood.png"));
    EXPECT_EQ(inTextures, SideFiles::find("/home/other/wood.png"));
    EXPECT_EQ(inTextures, SideFiles::find("wood.png"));
    EXPECT_EQ(inTextures, SideFiles::find("Textures\\WOOD.PNG"));
    EXPECT_EQ(inTextures, SideFiles::find("\"textures/w%6Fod.png\" "));
    EXPECT_EQ(inSails, SideFiles::find("D:/x/sail.png"));
    EXPECT_EQ(inSails, SideFiles::find("sail.png", {directory.file("set/sails")}));
    EXPECT_EQ("", SideFiles::find("missing.png"));
    EXPECT_EQ("", SideFiles::find("/etc/passwd"));
    EXPECT_EQ("", SideFiles::find("../../../../../../../../etc/passwd"));
    EXPECT_EQ("", SideFiles::find(""));
}

TEST_F(SideFilesOfModels, AreNotLookedForInTheCurrentDirectoryNorWhereTheEnvironmentSays)
{
    fs::create_directories(directory.file("away/deep/here"));
    fs::copy_file(VELAFORGE_SOURCE_DIR "/models/sail.png", directory.file("away/deep/here/sail.png"));
    directory.write("set/boat/boat.mtl", "newmtl a\nmap_Kd sail.png\n");
    directory.write("set/boat/boat.obj", std::string("mtllib boat.mtl\n") + triangle);
    setenv("OSG_FILE_PATH", directory.file("away/deep/here").c_str(), 1);
    fs::current_path(directory.file("away/deep/here"));
    ReadOutcome outcome = read(model);
    EXPECT_THAT(outcome.warnings, Contains(HasSubstr("sail.png"))) << "it was found";
    fs::copy_file(VELAFORGE_SOURCE_DIR "/models/sail.png", directory.file("set/sails/sail.png"));
    outcome = read(model);
    fs::current_path("/");
    EXPECT_THAT(outcome.warnings, IsEmpty());
    EXPECT_THAT(outcome.files, Contains(directory.file("set/sails/sail.png")));
}

TEST_F(SideFilesOfModels, ABufferFromElsewhereIsNotTakenForCoordinates)
{
    if (!vfFormats::hasAssimp())
        GTEST_SKIP() << "built without the reader";
    const float points[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    directory.write("set/boat/a.bin", std::string(reinterpret_cast<const char*>(points), sizeof(points)));
    EXPECT_TRUE(read(directory.write("set/boat/a.gltf", gltf("a.bin"))).scene) << "a sound one";
    mkfifo(directory.file("set/boat/pipe.bin").c_str(), 0600);
    for (const char* uri : {"../../../../../../../../etc/passwd", "/etc/passwd", "pipe.bin"}) {
        const ReadOutcome outcome = read(directory.write("set/boat/a.gltf", gltf(uri)));
        EXPECT_FALSE(outcome.scene) << uri;
        EXPECT_NE("", outcome.reason);
    }
}

TEST_F(SideFilesOfModels, MaterialsFromElsewhereAreNotOpened)
{
    mkfifo(directory.file("set/boat/pipe.mtl").c_str(), 0600);
    directory.write("away.mtl", "newmtl a\nKd 1 0 0\n");
    for (const std::string& name : {std::string("/proc/self/mem"), std::string("../../away.mtl"),
                                    directory.file("away.mtl"), std::string("pipe.mtl")})
    {
        const ReadOutcome outcome =
            read(directory.write("set/boat/boat.obj", "mtllib " + name + "\n" + triangle));
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_THAT(outcome.warnings, Contains(HasSubstr("the materials are missing"))) << name;
        EXPECT_THAT(outcome.files, IsEmpty()) << name;
    }
}
