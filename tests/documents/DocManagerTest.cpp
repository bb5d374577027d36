// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/StandardPaths.h>
#include <velaforge/documents/FileHistory.h>

#include <osg/Image>
#include <osgDB/Archive>
#include <osgDB/Registry>

#include <gmock/gmock.h>

using testing::ElementsAre;
using vfApplication::DocManager;
using vfApplication::DocTemplate;
using vfApplication::Document;
using vfBase::Options;
using vfBase::VfString;
using vfTest::makeTemplate;
using vfTest::record;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;
using vfTest::slotOf;

namespace {

struct Bench : RecordingApplication
{
    Bench() { makeTemplate(manager); }
};

/// @return whether what a loader cached is still there
bool isCached()
{
    return osgDB::Registry::instance()->getFromObjectCache("cached") != nullptr;
}

void cacheSomething()
{
    osgDB::Registry::instance()->addEntryToObjectCache("cached", new osg::Image);
}

/// An archive without files that records its end.
class RecordedArchive : public osgDB::Archive
{
public:
    void close() override {}
    std::string getArchiveFileName() const override { return {}; }
    std::string getMasterFileName() const override { return {}; }
    bool fileExists(const std::string&) const override { return false; }
    osgDB::FileType getFileType(const std::string&) const override { return osgDB::FILE_NOT_FOUND; }
    bool getFileNames(osgDB::DirectoryContents&) const override { return false; }
    ReadResult readObject(const std::string&, const Options*) const override { return {}; }
    ReadResult readImage(const std::string&, const Options*) const override { return {}; }
    ReadResult readHeightField(const std::string&, const Options*) const override { return {}; }
    ReadResult readNode(const std::string&, const Options*) const override { return {}; }
    ReadResult readShader(const std::string&, const Options*) const override { return {}; }
    WriteResult writeObject(const osg::Object&, const std::string&, const Options*) const override
    {
        return {};
    }
    WriteResult writeImage(const osg::Image&, const std::string&, const Options*) const override
    {
        return {};
    }
    WriteResult writeHeightField(const osg::HeightField&, const std::string&, const Options*) const override
    {
        return {};
    }
    WriteResult writeNode(const osg::Node&, const std::string&, const Options*) const override { return {}; }
    WriteResult writeShader(const osg::Shader&, const std::string&, const Options*) const override
    {
        return {};
    }

protected:
    ~RecordedArchive() override { record("archive freed"); }
};

class RecordedImage : public osg::Image
{
protected:
    ~RecordedImage() override { record("object freed"); }
};

} // namespace

TEST(DocManager, FreesWhatLoadersCachedArchivesFirst)
{
    DocManager manager;
    osgDB::Registry::instance()->addToArchiveCache("cached", new RecordedArchive);
    osgDB::Registry::instance()->addEntryToObjectCache("cached", new RecordedImage);
    manager.removeDocument(nullptr);
    EXPECT_THAT(recorder().lines(), ElementsAre("archive freed", "object freed"));
}

TEST(DocManager, StartsEmpty)
{
    DocManager manager;
    EXPECT_EQ(nullptr, manager.getCurrentView());
    EXPECT_EQ(nullptr, manager.getCurrentDocument());
    EXPECT_EQ(100, manager.getMaxDocsOpen());
    EXPECT_EQ(0, manager.getNumDocuments());
    EXPECT_EQ(0u, manager.getTemplates().size());
    EXPECT_EQ(9u, manager.getFileHistory()->getMaxFiles());
    EXPECT_TRUE(manager.initialize());
    EXPECT_EQ(1, manager.askForUserConfirmation());
    EXPECT_EQ(1, manager.askForConfirmRevert());
    Options options;
    EXPECT_EQ("", manager.selectDocumentSavePath("", "", "", "", options));
    VfString path;
    EXPECT_EQ(nullptr, manager.selectDocumentPath(nullptr, 0, path, true));
    EXPECT_EQ(nullptr, manager.selectDocumentTypeUser(nullptr, 0));
    const DocManager withFlag(false);
    EXPECT_EQ(100, withFlag.getMaxDocsOpen());
}

TEST(DocManager, KeepsATemplateAndADocumentOnce)
{
    Bench bench;
    DocTemplate* kind = bench.manager.getTemplates().first();
    bench.manager.associateTemplate(kind);
    EXPECT_EQ(1u, bench.manager.getTemplates().size());
    Document* document = bench.open("a.obj");
    bench.manager.addDocument(document);
    EXPECT_EQ(1, bench.manager.getNumDocuments());
    EXPECT_TRUE(bench.manager.containsDocument(document));
    EXPECT_TRUE(bench.manager.containsTemplate(kind));
}

TEST(DocManager, AddsVisibleTemplatesBehindWhatIsThereDuplicatesIncluded)
{
    vfTest::RecordingManager manager;
    DocTemplate* visible = makeTemplate(manager, "obj", "obj", 1);
    makeTemplate(manager, "stl", "stl", 2);
    DocTemplate* both = makeTemplate(manager, "ply", "ply", 3);
    vfBase::Vector<DocTemplate*> templates;
    templates << both;
    manager.getVisibleTemplates(templates);
    EXPECT_THAT(templates.asStdVector(), ElementsAre(both, visible, both));
}

TEST(DocManager, ItsListsAreHandlesAndNotSnapshots)
{
    Bench bench;
    const auto templates = bench.manager.getTemplates();
    const auto documents = bench.manager.getDocumentList();
    makeTemplate(bench.manager, "stl", "stl");
    bench.open("a.obj");
    EXPECT_EQ(2u, templates.size());
    EXPECT_EQ(1u, documents.size());
}

TEST(DocManager, ClosingTheLastDocumentClearsTheCachesAndAnEarlierOneDoesNot)
{
    Bench bench;
    Document* first = bench.open("a.obj");
    Document* second = bench.open("b.obj");
    cacheSomething();
    EXPECT_TRUE(bench.manager.closeDocument(first, false));
    EXPECT_TRUE(isCached());
    EXPECT_TRUE(bench.manager.closeDocument(second, false));
    EXPECT_FALSE(isCached());
}

TEST(DocManager, RemovingAStrangerFromAnEmptyListClearsTheCachesToo)
{
    DocManager manager;
    cacheSomething();
    manager.removeDocument(nullptr);
    EXPECT_FALSE(isCached());
}

TEST(DocManager, ADocumentWhoseUserCancelsStaysUnchanged)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    document->modify(true);
    bench.manager.confirmationResult = 0;
    recorder().take();
    EXPECT_FALSE(bench.manager.closeDocument(document, false));
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 close", "doc1 onSaveModified", "askForUserConfirmation"));
    EXPECT_TRUE(document->isModified());
    EXPECT_TRUE(bench.manager.containsDocument(document));
}

TEST(DocManager, ForcedAgainstAUserWhoCancelsTwiceTheDocumentLeavesTheListAlive)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    document->modify(true);
    bench.manager.confirmationResult = 0;
    recorder().take();
    EXPECT_TRUE(bench.manager.closeDocument(document, true));
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 close", "doc1 onSaveModified", "askForUserConfirmation",
                                               "doc1 deleteAllViews", "view1 onClose forced", "doc1 close",
                                               "doc1 onSaveModified", "askForUserConfirmation"));
    EXPECT_FALSE(bench.manager.containsDocument(document));
    bench.manager.confirmationResult = 2;
    EXPECT_TRUE(document->deleteAllViews());
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(DocManager, ClosesInItsOrder)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    EXPECT_TRUE(bench.manager.closeDocument(document, false));
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 close", "doc1 onSaveModified", "unwatch a.obj", "doc1 onCloseDocument",
                            "view1 onClosingDocument", "callback closing a.obj", "doc1 deleteContents",
                            "doc1 deleteAllViews", "view1 onClose forced", "doc1 close",
                            "doc1 onSaveModified", "unwatch a.obj", "doc1 onCloseDocument",
                            "view1 onClosingDocument", "callback closing a.obj", "doc1 deleteContents",
                            "~view1", "manager deactivates none", "doc1 onChangedViewList", "~doc1"));
}

TEST(DocManager, ARefusalStopsClosingAndTheEarlierOnesStayClosed)
{
    Bench bench;
    bench.open("a.obj");
    Document* second = bench.open("b.obj");
    Document* third = bench.open("c.obj");
    second->modify(true);
    bench.manager.confirmationResult = 0;
    EXPECT_FALSE(bench.manager.closeDocuments(false));
    EXPECT_EQ(nullptr, bench.manager.findDocumentByPath("a.obj"));
    EXPECT_THAT(bench.manager.getDocumentList().asStdVector(), ElementsAre(second, third));
    EXPECT_FALSE(bench.manager.clear(false));
    bench.manager.confirmationResult = 2;
    EXPECT_TRUE(bench.manager.clear(false));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(DocManager, NumbersNewDocumentsOnceEach)
{
    Bench bench;
    EXPECT_EQ("unnamed1", bench.manager.makeNewDocumentName());
    EXPECT_EQ("unnamed2", bench.manager.makeNewDocumentName());
    Document* document = bench.application.newDocument();
    EXPECT_EQ("unnamed3", document->getFilename());
    bench.manager.closeDocument(document, false);
    EXPECT_EQ("unnamed4", bench.manager.makeNewDocumentName());
}

TEST(DocManager, FindsADocumentByItsPathAsItStands)
{
    Bench bench;
    Document* document = bench.open("/models/a.obj");
    EXPECT_EQ(document, bench.manager.findDocumentByPath("/models/a.obj"));
    EXPECT_EQ(nullptr, bench.manager.findDocumentByPath("/Models/A.obj"));
    EXPECT_EQ(nullptr, bench.manager.findDocumentByPath("/models//a.obj"));
}

TEST(DocManager, TheLastDirectoryIsThatOfTheNewestFileAndThenKept)
{
    const vfTest::TemporaryDirectory directory;
    DocManager manager;
    manager.addFileToHistory(directory.file("a.obj"));
    EXPECT_EQ(directory.path(), manager.getLastDirectory().str());
    manager.addFileToHistory("/tmp/b.obj");
    EXPECT_EQ(directory.path(), manager.getLastDirectory().str());
    manager.setLastDirectory("/chosen");
    EXPECT_EQ("/chosen", manager.getLastDirectory());
}

TEST(DocManager, TheLastDirectoryIsTheUsersDocumentsOtherwise)
{
    using vfBase::StandardPaths;
    EXPECT_EQ(StandardPaths::standardLocation(StandardPaths::Documents), DocManager().getLastDirectory());
    DocManager manager;
    manager.addFileToHistory("/no/such/directory/a.obj");
    EXPECT_EQ(StandardPaths::standardLocation(StandardPaths::Documents), manager.getLastDirectory());
}

TEST(DocManager, TheCurrentDocumentIsNullOnceItsViewIsGoneAlsoIfOthersRemain)
{
    Bench bench;
    Document* document = bench.open("a.obj");
    bench.manager.createView(document, Options());
    EXPECT_EQ(document, bench.manager.getCurrentDocument());
    delete bench.manager.getCurrentView();
    EXPECT_EQ(nullptr, bench.manager.getCurrentDocument());
    EXPECT_EQ(1u, document->getViewList().size());
}

TEST(DocManager, TheCurrentDocumentFollowsAnOverriddenCurrentView)
{
    struct WithoutView : DocManager
    {
        vfApplication::View* getCurrentView() const override { return nullptr; }
    };
    RecordingApplication bench;
    auto* manager = new WithoutView;
    bench.application.setDocManager(manager);
    makeTemplate(*manager);
    Document* document = manager->createDocument("a.obj", Options());
    ASSERT_NE(nullptr, document);
    EXPECT_EQ(nullptr, manager->getCurrentDocument());
}

TEST(DocManager, ItsDestructorClosesDocumentsThenTemplates)
{
    RecordingApplication bench;
    auto manager = std::make_unique<DocManager>();
    makeTemplate(*manager);
    manager->createDocument("a.obj", Options());
    manager->createDocument("b.obj", Options());
    recorder().take();
    manager.reset();
    const vfTest::Lines lines = recorder().take();
    EXPECT_EQ("~doc2", lines.back());
    EXPECT_EQ(1, std::count(lines.begin(), lines.end(), "~doc1"));
}

TEST(DocManager, ItsDestructorDeletesADocumentThatRefusedAndLeftNoView)
{
    RecordingApplication bench;
    auto manager = std::make_unique<DocManager>();
    makeTemplate(*manager);
    manager->createDocument("a.obj", Options());
    // A document without a view is deleted by the loop behind the closing.
    auto* lone = new RecordingDocument;
    lone->setDocumentTemplate(manager->getTemplates().first());
    manager->addDocument(lone);
    recorder().take();
    manager.reset();
    EXPECT_EQ(1, recorder().count("~doc2"));
}

TEST(DocManager, OperationsKeepTheirSlots)
{
    EXPECT_EQ(2, slotOf(&DocManager::initialize));
    EXPECT_EQ(3, slotOf(&DocManager::addFileToHistory));
    EXPECT_EQ(4, slotOf(&DocManager::getFileHistory));
    EXPECT_EQ(5, slotOf(&DocManager::makeNewDocumentName));
    EXPECT_EQ(6, slotOf(&DocManager::activateView));
    EXPECT_EQ(7, slotOf(&DocManager::createDocument));
    EXPECT_EQ(8, slotOf(&DocManager::updateDocument));
    EXPECT_EQ(9, slotOf(&DocManager::createView));
    EXPECT_EQ(10, slotOf(&DocManager::getCurrentView));
    EXPECT_EQ(11, slotOf(&DocManager::findTemplateForPath));
    EXPECT_EQ(12, slotOf(&DocManager::getNativeTemplate));
    EXPECT_EQ(13, slotOf(&DocManager::selectDocumentPath));
    EXPECT_EQ(14, slotOf(&DocManager::selectDocumentType));
    EXPECT_EQ(15, slotOf(&DocManager::selectDocumentTypeUser));
    EXPECT_EQ(16, slotOf(&DocManager::selectViewType));
    EXPECT_EQ(17, slotOf(&DocManager::askForUserConfirmation));
    EXPECT_EQ(18, slotOf(&DocManager::askForConfirmRevert));
    EXPECT_EQ(19, slotOf(&DocManager::selectDocumentSavePath));
}
