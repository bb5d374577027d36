// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/application/ApplicationPrivate.h>
#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/ArgumentParser.h>
#include <velaforge/base/BaseException.h>

#include <osgDB/Options>

#include <gmock/gmock.h>

#include <memory>

#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::Application;
using vfBase::Options;
using vfBase::VfString;
using vfTest::Lines;
using vfTest::recorder;
using vfTest::RecordingApplication;

namespace {

/// Notes each call of createDocument with the options that came, and makes nothing.
class NotingManager : public vfApplication::DocManager
{
public:
    vfApplication::Document* createDocument(const VfString& path, const Options& options) override
    {
        vfTest::record("create " + path.str() + " LOG=" + options.getPluginStringData("LOG").str());
        bodies.emplace_back(options.getImp());
        return nullptr;
    }
    std::vector<osg::ref_ptr<osgDB::Options>> bodies;
};

struct Noting
{
    explicit Noting(std::initializer_list<const char*> arguments)
        : bench(arguments), manager(new NotingManager)
    {
        bench.application.setDocManager(manager);
        recorder().take();
    }

    Lines open()
    {
        bench.application.openDocuments(&bench.application.getArgumentParser());
        return recorder().take();
    }

    RecordingApplication bench;
    NotingManager* manager;
};

} // namespace

TEST(OpenDocuments, WithTheProgramsNameAloneNothingIsOpened)
{
    Noting noting{"program"};
    EXPECT_THAT(noting.open(), IsEmpty());
}

TEST(OpenDocuments, TakesFileNamesInOrderEachWithOptionsOfItsOwn)
{
    Noting noting{"program", "a.obj", "b.obj"};
    EXPECT_THAT(noting.open(), ElementsAre("create a.obj LOG=", "create b.obj LOG="));
    EXPECT_NE(noting.manager->bodies[0], noting.manager->bodies[1]);
}

TEST(OpenDocuments, LogTravelsWithTheOptionsAndIsConsumed)
{
    Noting noting{"program", "a.obj", "--log", "b.obj"};
    EXPECT_THAT(noting.open(), ElementsAre("create a.obj LOG=TRUE", "create b.obj LOG=TRUE"));
    EXPECT_EQ(3, noting.bench.application.getArgumentCount());
}

TEST(OpenDocuments, LogIsConsumedAlsoWithoutAFile)
{
    Noting noting{"program", "--log"};
    EXPECT_THAT(noting.open(), IsEmpty());
    EXPECT_EQ(1, noting.bench.application.getArgumentCount());
}

TEST(OpenDocuments, SkipsOptionsButNotTheirParameters)
{
    Noting noting{"program", "--image", "a.png", "-x", "b.obj"};
    EXPECT_THAT(noting.open(), ElementsAre("create a.png LOG=", "create b.obj LOG="));
}

TEST(OpenDocuments, TheSameNameTwiceIsAskedForTwice)
{
    Noting noting{"program", "a.obj", "a.obj"};
    EXPECT_THAT(noting.open(), ElementsAre("create a.obj LOG=", "create a.obj LOG="));
}

TEST(OpenDocuments, TheCountIsLive)
{
    Noting noting{"program", "a.obj", "b.obj", "c.obj"};
    struct Consuming : NotingManager
    {
        vfApplication::Document* createDocument(const VfString& path, const Options& options) override
        {
            --Application::instance(false)->getArgumentCount();
            return NotingManager::createDocument(path, options);
        }
    };
    noting.bench.application.setDocManager(new Consuming);
    EXPECT_THAT(noting.open(), ElementsAre("create a.obj LOG=", "create b.obj LOG="));
}

TEST(OpenDocuments, WritesTheLineForEachFileThatDidGiveADocument)
{
    vfBase::ApplicationInfo::instance().setApplicationName("viewer");
    RecordingApplication bench{"program", "a.obj", "unknown.xyz", "b.obj"};
    makeTemplate(bench.manager);
    testing::internal::CaptureStdout();
    bench.application.openDocuments(&bench.application.getArgumentParser());
    EXPECT_EQ("viewer: No data loaded for a.obj\nviewer: No data loaded for b.obj\n",
              testing::internal::GetCapturedStdout());
}

TEST(OpenDocuments, AnExceptionPassesThrough)
{
    RecordingApplication bench{"program", "a.obj"};
    makeTemplate(bench.manager);
    vfTest::RecordingDocument::inOpen = [] { throw std::runtime_error("broken"); };
    EXPECT_THROW(bench.application.openDocuments(&bench.application.getArgumentParser()),
                 vfBase::BaseException);
}

TEST(ApplicationDocuments, OpenDocumentIgnoresItsThirdArgument)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    vfApplication::Document* first = bench.application.openDocument("a.obj", Options(), nullptr);
    EXPECT_NE(nullptr, first);
    EXPECT_EQ(first, bench.application.openDocument("a.obj", Options(), "third"));
    EXPECT_EQ(nullptr, bench.application.openDocument("x.xyz", Options(), "third"));
    EXPECT_EQ(first, bench.application.findDocument("a.obj"));
    EXPECT_EQ(nullptr, bench.application.findDocument("b.obj"));
    EXPECT_EQ(1u, bench.application.getNumDocuments());
    EXPECT_EQ(first, bench.application.getActiveDocument());
}

TEST(ApplicationDocuments, NewDocumentMakesAnEmptyOne)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    vfApplication::Document* document = bench.application.newDocument();
    ASSERT_NE(nullptr, document);
    EXPECT_EQ("unnamed1", document->getFilename());
}

TEST(ApplicationDocuments, ClosingNullIsFalseAndTouchesNoManager)
{
    struct Own : Application
    {
        using Application::Application;
        vfApplication::DocManager& getDocManager() const override
        {
            vfTest::record("getDocManager");
            return Application::getDocManager();
        }
    };
    vfTest::RecordingProducer producer;
    vfTest::CommandLine line({"program"});
    Own application(line.argc(), line.argv(), vfApplication::ApplicationSetup());
    auto* manager = new vfTest::RecordingManager;
    application.setDocManager(manager);
    makeTemplate(*manager);
    vfApplication::Document* document = application.openDocument("a.obj", Options());
    recorder().take();
    EXPECT_FALSE(application.closeDocument(nullptr));
    EXPECT_THAT(recorder().take(), IsEmpty());
    EXPECT_TRUE(application.closeDocument(document));
    EXPECT_EQ(1, recorder().count("getDocManager"));
    EXPECT_EQ(0u, application.getNumDocuments());
}

TEST(ApplicationDocuments, SetActiveDocumentActivatesItsFirstView)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    vfApplication::Document* first = bench.open("a.obj");
    bench.open("b.obj");
    bench.application.setActiveDocument(first);
    EXPECT_EQ(first, bench.application.getActiveDocument());
    EXPECT_THAT(recorder().take(),
                ElementsAre("view1 activated view1, before view2", "manager activates view1"));
}

TEST(ApplicationDocuments, OnUpdateUpdatesEveryOtherDocumentBeginningWithTheFirst)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    bench.application.onUpdate();
    EXPECT_THAT(recorder().take(), IsEmpty());
    bench.open("a.obj");
    bench.open("b.obj");
    bench.application.onUpdate();
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onUpdate from none"));
    bench.open("c.obj");
    bench.open("d.obj");
    bench.application.onUpdate();
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onUpdate from none", "view3 onUpdate from none"));
}

TEST(ApplicationDocuments, OnClosingDocumentTellsTheCallbackIfThereIsOne)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    vfApplication::Document* document = bench.open("a.obj");
    bench.application.onClosingDocument(document);
    EXPECT_THAT(recorder().take(), ElementsAre("callback closing a.obj"));
    bench.application.removeCallback();
    bench.application.onClosingDocument(document);
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(ApplicationDocuments, TheBodyAddsFindsAndErasesDocumentsWithoutDeletingThem)
{
    RecordingApplication bench;
    makeTemplate(bench.manager);
    vfApplication::Document* document = bench.open("a.obj");
    vfApplication::ApplicationPrivate& body = *bench.application.getImp();
    EXPECT_FALSE(body.eraseDocument("unknown.obj"));
    EXPECT_EQ(document, body.findDocument("a.obj"));
    EXPECT_TRUE(body.eraseDocument("a.obj"));
    EXPECT_EQ(nullptr, body.findDocument("a.obj"));
    EXPECT_EQ(0, recorder().count("~doc1"));
    EXPECT_TRUE(body.addDocument("ignored", document));
    EXPECT_EQ(document, body.findDocument("a.obj"));
}

TEST(WorkingLocation, IsTheDocumentsDirectoryUntilOneIsSet)
{
    const RecordingApplication bench;
    EXPECT_STREQ(bench.application.getDocumentsLocation(), bench.application.getWorkingLocation());
}

TEST(WorkingLocation, ADirectoryThatDoesNotExistIsNotTaken)
{
    RecordingApplication bench;
    const vfTest::TemporaryDirectory directory;
    bench.application.setWorkingLocation(directory.path().c_str());
    bench.application.setWorkingLocation(directory.file("missing").c_str());
    bench.application.setWorkingLocation("");
    bench.application.setWorkingLocation(bench.application.getWorkingLocation());
    EXPECT_EQ(directory.path(), bench.application.getWorkingLocation());
}

TEST(WorkingLocation, FallsBackWhenItsDirectoryWasRemovedAndKeepsTheSetting)
{
    RecordingApplication bench;
    auto directory = std::make_unique<vfTest::TemporaryDirectory>();
    const std::string path = directory->path();
    bench.application.setWorkingLocation(path.c_str());
    directory.reset();
    EXPECT_STREQ(bench.application.getDocumentsLocation(), bench.application.getWorkingLocation());
    EXPECT_EQ(path, vfApplication::ApplicationSettings::instance(false)->getWorkingLocation());
}
