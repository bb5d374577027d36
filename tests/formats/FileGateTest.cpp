// SPDX-License-Identifier: MIT
#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadGuard.h>
#include <velaforge/formats/readers/FileGate.h>

#include <osg/Image>
#include <osg/Node>
#include <osgDB/FileUtils>
#include <osgDB/ReadFile>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using vfFormats::FileGate;
using vfTest::TemporaryDirectory;

TEST(FileGate, PlugInsComeFromOpenSceneGraphsOwnDirectoryByAbsolutePath)
{
    FileGate::install();
    const std::string path = osgDB::findLibraryFile("osgPlugins-3.6.5/osgdb_stl.so");
    EXPECT_THAT(path, testing::MatchesRegex("/.*/osgPlugins-[0-9.]+/osgdb_stl\\.so"));
    EXPECT_EQ(0, access(path.c_str(), R_OK));
}

TEST(FileGate, ALibraryThatIsNotListedGetsAPathWhereNothingIs)
{
    FileGate::install();
    for (const char* name :
         {"osgPlugins-3.6.5/osgdb_lua.so", "osgdb_curl.so", "libosgText.so", "../evil.so", "evil"})
    {
        const std::string path = osgDB::findLibraryFile(name);
        EXPECT_THAT(path, StartsWith("/")) << name;
        EXPECT_NE(0, access(path.c_str(), F_OK)) << name;
    }
}

TEST(FileGate, APlugInInTheCurrentDirectoryIsNotLoaded)
{
    const TemporaryDirectory directory;
    // A file that is no library: a reader that loads it instead of the installed one cannot read the model.
    directory.write("osgPlugins-3.6.5/osgdb_stl.so", "not a library");
    directory.write("osgdb_stl.so", "not a library");
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    setenv("OSG_LIBRARY_PATH", directory.path().c_str(), 1);
    setenv("LD_LIBRARY_PATH", directory.path().c_str(), 1);
    FileGate::install();
    FileGate::install();
    EXPECT_TRUE(osgDB::readRefNodeFile(vfTest::signpost("stl")));
}

TEST(FileGate, OnlyListedFormatsAreRead)
{
    FileGate::install();
    const TemporaryDirectory directory;
    for (const char* name :
         {"a.lua", "a.zip", "a.osga", "a.p3d", "a.iv", "a.frag", "a.obj.10,20,30.trans", "a"}) {
        const std::string path = directory.write(name, "contents");
        EXPECT_FALSE(osgDB::readRefNodeFile(path)) << name;
        EXPECT_FALSE(osgDB::readRefImageFile(path)) << name;
        EXPECT_FALSE(osgDB::readRefObjectFile(path)) << name;
        EXPECT_FALSE(osgDB::readRefScriptFile(path)) << name;
    }
    EXPECT_FALSE(osgDB::readRefNodeFile(vfTest::signpost("obj") + ".5,5,5.scale"));
}

TEST(FileGate, AddressesAreNotFetched)
{
    FileGate::install();
    FileGate::takeFailures();
    EXPECT_FALSE(osgDB::readRefNodeFile("http://localhost/model.obj"));
    EXPECT_THAT(FileGate::takeFailures(),
                ElementsAre("http://localhost/model.obj: addresses are not fetched"));
    EXPECT_FALSE(osgDB::readRefImageFile("https://localhost/image.png"));
}

TEST(FileGate, WhatAFileNamesIsLookedAtToo)
{
    FileGate::install();
    const TemporaryDirectory directory;
    directory.write("hostile.osgt",
                    "#Ascii Scene\n#Version 161\n#Generator OpenSceneGraph 3.6.5\n\n"
                    "osg::ProxyNode {\n  UniqueID 1\n  FileList 2 {\n"
                    "    FileNames \"run.lua\"\n    FileNames \"http://localhost/x.obj\"\n  }\n}\n");
    directory.write("run.lua", "os.execute('touch ran')");
    FileGate::takeFailures();
    osgDB::readRefNodeFile(directory.file("hostile.osgt"));
    EXPECT_NE(0, access(directory.file("ran").c_str(), F_OK));
    const std::vector<std::string> failures = FileGate::takeFailures();
    for (const std::string& failure : failures)
        EXPECT_THAT(failure, testing::AnyOf(HasSubstr("not a listed"), HasSubstr("not fetched")));
}

TEST(FileGate, ATextureThatIsMissingOrNoRegularFileIsTold)
{
    FileGate::install();
    const TemporaryDirectory directory;
    directory.write("a.mtl", "newmtl m\nmap_Kd missing.png\nnewmtl n\nmap_Kd fifo.png\n");
    const std::string model =
        directory.write("a.obj", "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 "
                                 "3/1\nusemtl n\nf 1/1 2/1 3/1\n");
    ASSERT_EQ(0, mkfifo(directory.file("fifo.png").c_str(), 0600));
    FileGate::takeFailures();
    EXPECT_TRUE(osgDB::readRefNodeFile(model));
    const std::vector<std::string> failures = FileGate::takeFailures();
    EXPECT_THAT(failures, testing::Contains(HasSubstr("missing.png: No such file or directory")));
    EXPECT_THAT(failures, testing::Contains(HasSubstr("fifo.png: it is not a regular file")));
    EXPECT_THAT(FileGate::takeFailures(), IsEmpty());
}

TEST(ModelFiles, TellWhyAFileCannotBeRead)
{
    const TemporaryDirectory directory;
    EXPECT_EQ("", vfFormats::readError(directory.write("a", "x")));
    EXPECT_EQ("the file is empty", vfFormats::readError(directory.write("b", "")));
    EXPECT_EQ("it is a directory", vfFormats::readError(directory.path()));
    EXPECT_EQ("No such file or directory", vfFormats::readError(directory.file("missing")));
    EXPECT_EQ("it is not a regular file", vfFormats::readError("/dev/null"));
}

TEST(ModelFiles, AreKnownByExtension)
{
    EXPECT_TRUE(vfFormats::isModelFile("/models/a.OBJ"));
    EXPECT_FALSE(vfFormats::isModelFile("/models/a.png"));
    EXPECT_TRUE(vfFormats::isImageFile("a.Png"));
    EXPECT_FALSE(vfFormats::isImageFile("obj"));
    EXPECT_THAT(vfFormats::modelFilter(), StartsWith("obj,stl,ply,"));
    EXPECT_THAT(vfFormats::imageFilter(), StartsWith("png,jpg,jpeg,"));
}

TEST(ReadGuard, NothingIsReadInThisProcess)
{
    vfFormats::installReadGuard();
    vfFormats::installReadGuard();
    EXPECT_FALSE(osgDB::readRefNodeFile(vfTest::signpost("stl")));
    EXPECT_FALSE(osgDB::readRefNodeFile(vfTest::signpost("osgt")));
    EXPECT_FALSE(osgDB::readRefObjectFile(vfTest::signpost("osgt")));
    EXPECT_FALSE(osgDB::readRefImageFile(VELAFORGE_SOURCE_DIR "/models/sail.png"));
    EXPECT_FALSE(osgDB::readRefShaderFile("shaders/osgText_Text.vert"));
    EXPECT_EQ("", osgDB::findDataFile(vfTest::signpost("stl")));
}

TEST(ReadGuard, PlugInsForWritingComeFromOpenSceneGraphsOwnDirectory)
{
    const TemporaryDirectory directory;
    directory.write("osgPlugins-3.6.5/osgdb_png.so", "not a library");
    ASSERT_EQ(0, chdir(directory.path().c_str()));
    vfFormats::installReadGuard();
    EXPECT_THAT(osgDB::findLibraryFile("osgPlugins-3.6.5/osgdb_png.so"),
                testing::MatchesRegex("/.*/osgPlugins-[0-9.]+/osgdb_png\\.so"));
    EXPECT_NE(0, access(osgDB::findLibraryFile("osgdb_lua.so").c_str(), F_OK));
}
