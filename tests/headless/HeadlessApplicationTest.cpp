// SPDX-License-Identifier: MIT
#include "support/RecordingShell.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/documents/DocManager.h>
#include <velaforge/documents/DocTemplate.h>
#include <velaforge/documents/Document.h>
#include <velaforge/documents/View.h>
#include <velaforge/headless/HeadlessApplication.h>
#include <velaforge/headless/HeadlessApplicationProducer.h>
#include <velaforge/headless/SnapshotSource.h>
#include <velaforge/shell/StatusBar.h>

#include <osgDB/ReadFile>

#include <gmock/gmock.h>

#include <iostream>
#include <new>
#include <stdexcept>

using testing::EndsWith;
using testing::HasSubstr;
using vfApplication::Application;
using vfBase::VfString;

namespace {

struct Sheet : vfApplication::Document
{
    void concreteDocumentOperation() override {}
};

/// A view whose picture is plain white.
struct White : vfApplication::View, vfApplication::SnapshotSource
{
    bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
    osg::ref_ptr<osg::Image> takeSnapshot(const vfApplication::SnapshotFormat& format,
                                          VfString& reason) override
    {
        if (getDocument()->getTitle() == "burning.txt")
            throw std::runtime_error("the lamp burns");
        reason = "no light";
        if (getDocument()->getTitle() == "dark.txt")
            return nullptr;
        osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(format.width, format.height, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
        std::fill_n(image->data(), image->getTotalSizeInBytes(), 255);
        return image;
    }
};

/// A view that cannot be shown without a window.
struct Blind : vfApplication::View
{
    bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
};

const vfBase::ClassInfo sheet("test", "Sheet", "test::Sheet", &vfApplication::Document::s_classInfo, nullptr,
                              8, []() -> vfBase::VfObject* { return new Sheet; });
const vfBase::ClassInfo white("test", "White", "test::White", &vfApplication::View::s_classInfo, nullptr, 8,
                              []() -> vfBase::VfObject* { return new White; });
const vfBase::ClassInfo blind("test", "Blind", "test::Blind", &vfApplication::View::s_classInfo, nullptr, 8,
                              []() -> vfBase::VfObject* { return new Blind; });

/// Throws what its argument says.
struct Throw : vfApplication::CommandPrivate
{
    Throw() { getProperties()["standalone"] = vfBase::VfVariant(true); }
    void invoke(const vfBase::VfVariant& argument) override
    {
        if (argument.toString() == "number")
            throw 42;
        if (argument.toString() == "memory")
            throw std::bad_alloc();
        throw vfBase::BaseException("outer", vfBase::BaseException("it burns"));
    }
};
const vfBase::ClassInfo throwing("test", "Throw", "test::Throw", &vfApplication::CommandPrivate::s_classInfo,
                                 nullptr, sizeof(Throw), []() -> vfBase::VfObject* { return new Throw; });

/// A command that says by its property that it failed.
struct Fail : vfApplication::CommandPrivate
{
    Fail() { getProperties()["standalone"] = vfBase::VfVariant(true); }
    void invoke(const vfBase::VfVariant&) override { getProperties()["failed"] = vfBase::VfVariant(true); }
};
const vfBase::ClassInfo failing("test", "Fail", "test::Fail", &vfApplication::CommandPrivate::s_classInfo,
                                nullptr, sizeof(Fail), []() -> vfBase::VfObject* { return new Fail; });

struct Setup : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        using vfApplication::DocTemplate;
        vfApplication::DocManager* manager = &Application::instance(false)->getDocManager();
        new DocTemplate(manager, "Sheets", "", "", "txt", "", "", &sheet, &white, 1, 0, vfBase::Options());
        new DocTemplate(manager, "Blind", "", "", "blind", "", "", &sheet, &blind, 1, 0, vfBase::Options());
    }
};

/// Runs a program with that command line. What it says on standard error is in said.
struct ProgramRun
{
    explicit ProgramRun(std::initializer_list<const char*> arguments) : line(arguments)
    {
        vfApplication::HeadlessApplicationProducer::install();
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Application application(line.argc(), line.argv(), Setup());
        result = application.run();
        said = testing::internal::GetCapturedStderr();
        testing::internal::GetCapturedStdout();
    }
    vfTest::CommandLine line;
    int result;
    std::string said;
};

} // namespace

TEST(HeadlessApplication, EndsByItselfWithoutAWish)
{
    const ProgramRun run({"program", "a.txt"});
    EXPECT_EQ(0, run.result);
}

TEST(HeadlessApplication, WritesASnapshotOfTheActiveDocumentInTheDefaultSize)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("picture.png");
    const ProgramRun run({"program", "a.txt", "--snapshot", picture.c_str()});
    EXPECT_EQ(0, run.result) << run.said;
    const osg::ref_ptr<osg::Image> image = osgDB::readRefImageFile(picture);
    ASSERT_TRUE(image);
    EXPECT_EQ(1280, image->s());
    EXPECT_EQ(800, image->t());
}

TEST(HeadlessApplication, TakesTheSizeAskedFor)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("picture.png");
    const ProgramRun run({"program", "--size", "16x9", "--snapshot", picture.c_str(), "a.txt"});
    EXPECT_EQ(0, run.result) << run.said;
    const osg::ref_ptr<osg::Image> image = osgDB::readRefImageFile(picture);
    ASSERT_TRUE(image);
    EXPECT_EQ(16, image->s());
    EXPECT_EQ(9, image->t());
}

TEST(HeadlessApplication, NonsenseForASizeIsAnErrorOnTheCommandLine)
{
    for (const char* size :
         {"abc", "0x10", "10x", "x10", "10x10x10", "-5x5", "10 x10", "16385x1", "99999999999x1"})
    {
        vfTest::CommandLine line({"program", "--size", size});
        vfBase::ArgumentParser parser(&line.argc(), line.argv());
        vfApplication::HeadlessApplication::readOptions(parser);
        EXPECT_TRUE(parser.hasErrors()) << size;
        EXPECT_THAT(parser.getErrorMessage().str(), HasSubstr("--size")) << size;
    }
}

TEST(HeadlessApplication, ItsOptionsStandInTheUsageText)
{
    vfTest::CommandLine line({"program"});
    vfBase::ArgumentParser parser(&line.argc(), line.argv());
    vfApplication::HeadlessApplication::declareOptions(parser);
    testing::internal::CaptureStdout();
    parser.printUsage(vfBase::ArgumentParser::CommandLineHelp);
    const std::string usage = testing::internal::GetCapturedStdout();
    EXPECT_THAT(usage, HasSubstr("--snapshot <file>"));
    EXPECT_THAT(usage, HasSubstr("--size <width>x<height>"));
    EXPECT_THAT(usage, HasSubstr("1280x800"));
}

TEST(HeadlessApplication, AnUnknownPictureFormatIsAnErrorOnTheCommandLine)
{
    const ProgramRun run({"program", "--snapshot", "picture.xyz", "a.txt"});
    EXPECT_EQ(3, run.result);
    EXPECT_THAT(run.said, HasSubstr("picture.xyz"));
}

TEST(HeadlessApplication, WithoutADocumentTheSnapshotFails)
{
    const ProgramRun run({"program", "--snapshot", "picture.png"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, HasSubstr("picture.png: snapshot not written: no document is open"));
}

TEST(HeadlessApplication, AViewThatIsNoSourceOfPicturesIsToldAsSuch)
{
    const ProgramRun run({"program", "--snapshot", "picture.png", "a.blind"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, HasSubstr("without a window"));
}

TEST(HeadlessApplication, TheReasonOfAViewIsTold)
{
    const ProgramRun run({"program", "--snapshot", "picture.png", "dark.txt"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, HasSubstr("no light"));
}

TEST(HeadlessApplication, ACommandThatThrowsIsOneLineAndStatus4)
{
    const ProgramRun run({"program", "--invoke", "test::Throw"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, EndsWith(": test::Throw: it burns\n"));
    EXPECT_EQ(run.said.find('\n'), run.said.size() - 1) << run.said;
    EXPECT_THAT(ProgramRun({"program", "--invoke", "test::Throw=number"}).said,
                EndsWith(": test::Throw: an unknown error\n"));
    EXPECT_THAT(ProgramRun({"program", "--invoke", "test::Throw=memory"}).said,
                EndsWith(": test::Throw: not enough memory\n"));
}

TEST(HeadlessApplication, NoPictureIsTakenAfterACommandThatThrows)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("picture.png");
    const ProgramRun run({"program", "a.txt", "--invoke", "test::Throw", "--snapshot", picture.c_str()});
    EXPECT_EQ(4, run.result);
    EXPECT_EQ("", vfTest::readFile(picture));
}

TEST(HeadlessApplication, ACommandThatSaysItFailedIsStatus4)
{
    EXPECT_EQ(4, ProgramRun({"program", "--invoke", "test::Fail"}).result);
}

TEST(HeadlessApplication, AViewThatThrowsIsToldWithThePicture)
{
    const ProgramRun run({"program", "--snapshot", "picture.png", "burning.txt"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, HasSubstr("picture.png: snapshot not written: the lamp burns\n"));
}

TEST(HeadlessApplication, AFullStandardOutputIsStatus4)
{
    std::cout.setstate(std::ios::badbit);
    const ProgramRun run({"program", "--list-commands"});
    std::cout.clear();
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said, EndsWith(": standard output: not all output could be written\n"));
}

TEST(HeadlessApplication, APathThatCannotBeWrittenIsTold)
{
    const ProgramRun run({"program", "--snapshot", "/proc/none/picture.png", "a.txt"});
    EXPECT_EQ(4, run.result);
    EXPECT_THAT(run.said,
                HasSubstr("/proc/none/picture.png: snapshot not written: No such file or directory"));
}

TEST(HeadlessApplication, ExitBeforeTheLoopMakesItReturnThatCode)
{
    vfApplication::HeadlessApplication shell;
    shell.exit(7);
    EXPECT_EQ(7, shell.runEventLoop());
    EXPECT_EQ(0, shell.onAfterRun());
    EXPECT_EQ(nullptr, shell.getStatusBar().getStatusBarInterface());
    shell.addFileToFileSystemWatcher("a");
    shell.removeFileFromFileSystemWatcher("a");
}
