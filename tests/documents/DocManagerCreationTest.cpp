// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"

#include <velaforge/base/BaseException.h>
#include <velaforge/documents/FileHistory.h>

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::IsEmpty;
using vfApplication::DocTemplate;
using vfApplication::Document;
using vfBase::Options;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;
using vfTest::RecordingView;

namespace {

const std::string routine = "vfApplication::DocManager::createDocument";

Options with(std::initializer_list<std::pair<const char*, const char*>> keys)
{
    Options options;
    for (const auto& [key, value] : keys)
        options.setPluginStringData(key, value);
    return options;
}

struct Bench : RecordingApplication
{
    Bench() : kind(makeTemplate(manager)) {}

    Document* create(const char* path, const Options& options = Options())
    {
        return manager.createDocument(path, options);
    }

    /// @return the text of what createDocument raises
    std::string raised(const char* path, const Options& options = Options())
    {
        try {
            manager.createDocument(path, options);
        } catch (const vfBase::BaseException& exception) {
            return exception.what();
        }
        return "nothing was raised";
    }

    DocTemplate* kind;
};

} // namespace

TEST(CreateDocument, GoesThroughItsStepsInOrder)
{
    Bench bench;
    EXPECT_NE(nullptr, bench.create("a.obj"));
    EXPECT_THAT(recorder().take(),
                ElementsAre("findTemplateForPath a.obj", "doc1 made", "doc1 onCreate a.obj", "view1 made",
                            "doc1 onChangedViewList", "view1 onCreate", "doc1 onOpenDocument a.obj",
                            "doc1 doOpenDocument a.obj", "view1 onUpdate from none", "create shell",
                            "watch a.obj", "history a.obj", "view1 activated view1, before none",
                            "manager activates view1", "callback created a.obj"));
}

TEST(CreateDocument, TheViewExistsBeforeTheContentsAndTheDocumentIsListedByThen)
{
    Bench bench;
    RecordingDocument::inOpen = [&bench] {
        EXPECT_EQ(1, bench.manager.getNumDocuments());
        EXPECT_EQ(1u, bench.manager.getDocumentList().first()->getViewList().size());
        EXPECT_EQ(nullptr, bench.manager.getCurrentView());
    };
    EXPECT_NE(nullptr, bench.create("a.obj"));
}

TEST(CreateDocument, HandsACloneOfTheOptionsOnWithBUILD_SCENEGRAPH)
{
    Bench bench;
    const Options options = with({{"LOG", "TRUE"}});
    bench.create("a.obj", options);
    EXPECT_EQ("TRUE", RecordingDocument::lastOpenOptions.getPluginStringData("BUILD_SCENEGRAPH"));
    EXPECT_EQ("TRUE", RecordingDocument::lastOpenOptions.getPluginStringData("LOG"));
    EXPECT_TRUE(options.getPluginStringData("BUILD_SCENEGRAPH").empty());
}

TEST(CreateDocument, TakesInvalidOptionsForNone)
{
    Bench bench;
    EXPECT_NE(nullptr, bench.create("a.obj", Options::invalid()));
    EXPECT_FALSE(Options::invalid().isValid());
}

TEST(CreateDocument, WithNoVisibleTemplateGivesNullAlsoForANewDocument)
{
    RecordingApplication bench;
    makeTemplate(bench.manager, "obj", "obj", 2);
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.obj", Options()));
    EXPECT_EQ(nullptr, bench.manager.createDocument("", with({{"NEWDOC", "TRUE"}})));
    EXPECT_EQ(nullptr, bench.manager.createNewDocument());
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(CreateDocument, ANewDocumentTakesTheOnlyVisibleTemplateWithoutAQuestion)
{
    Bench bench;
    Document* document = bench.manager.createNewDocument();
    ASSERT_NE(nullptr, document);
    EXPECT_THAT(recorder().take(),
                ElementsAre("selectDocumentType of 1", "doc1 made", "doc1 onCreate ", "view1 made",
                            "doc1 onChangedViewList", "view1 onCreate", "doc1 onNewDocument",
                            "view1 onChangeFilename", "view1 activated view1, before none",
                            "manager activates view1", "callback created unnamed1"));
    EXPECT_FALSE(document->alreadySaved());
    EXPECT_EQ(0, bench.manager.getFileHistory()->getCount());
}

TEST(CreateDocument, ANewDocumentAmongTwoTemplatesDependsOnTheUser)
{
    Bench bench;
    DocTemplate* second = new DocTemplate(&bench.manager, "Other", "stl", "", "stl", "vfTest::Document",
                                          "other", nullptr, &RecordingView::s_classInfo, 1, 0, Options());
    EXPECT_EQ(nullptr, bench.manager.createNewDocument());
    EXPECT_THAT(recorder().take(), ElementsAre("selectDocumentType of 2", "selectDocumentTypeUser of 2"));
    bench.manager.chooses = true;
    bench.manager.typeChoice = 1;
    Document* document = bench.manager.createNewDocument();
    ASSERT_NE(nullptr, document);
    EXPECT_EQ(second, document->getDocumentTemplate());
}

TEST(CreateDocument, NewAndSilentWithAnEmptyPathRaises)
{
    Bench bench;
    EXPECT_EQ("Exception in " + routine + ": using empty path with SILENT doesn't make sense",
              bench.raised("", with({{"NEWDOC", "TRUE"}, {"SILENT", "TRUE"}})));
}

TEST(CreateDocument, AnEmptyPathRaisesAlthoughNobodyAskedForSilence)
{
    Bench bench;
    EXPECT_EQ("Exception in " + routine + ": using empty path with SILENT doesn't make sense",
              bench.raised(""));
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(CreateDocument, NewAndSilentWithAPathMakesAnEmptyDocumentUnderThatName)
{
    Bench bench;
    Document* document = bench.create("a.obj", with({{"NEWDOC", "TRUE"}, {"SILENT", "TRUE"}}));
    ASSERT_NE(nullptr, document);
    EXPECT_EQ("a.obj", document->getFilename());
    EXPECT_FALSE(document->alreadySaved());
    EXPECT_EQ(0, bench.manager.getFileHistory()->getCount());
    EXPECT_EQ(1, recorder().count("findTemplateForPath a.obj"));
    EXPECT_EQ(1, recorder().count("doc1 onNewDocument"));
    EXPECT_EQ(0, recorder().count("doc1 doOpenDocument a.obj"));
}

TEST(CreateDocument, OnlyTheExactValueSwitchesAnOption)
{
    Bench bench;
    EXPECT_NE(nullptr, bench.create("a.obj", with({{"NEWDOC", "true"}})));
    EXPECT_EQ(1, recorder().count("doc1 doOpenDocument a.obj"));
}

TEST(CreateDocument, APathThatIsOpenGivesTheSameDocumentBeforeTheLimitIsLookedAt)
{
    Bench bench;
    bench.manager.setMaxDocsOpen(1);
    Document* document = bench.create("a.obj");
    recorder().take();
    EXPECT_EQ(document, bench.create("a.obj"));
    EXPECT_THAT(recorder().take(),
                ElementsAre("findTemplateForPath a.obj", "view1 activated view1, before view1",
                            "manager activates view1"));
    EXPECT_EQ(document, bench.create("a.obj", with({{"NEWDOC", "TRUE"}})));
    EXPECT_EQ(1, bench.manager.getNumDocuments());
}

TEST(CreateDocument, AnUnknownExtensionGivesNullUnlessItIsOverridden)
{
    Bench bench;
    EXPECT_EQ(nullptr, bench.create("a.xyz", with({{"SILENT", "TRUE"}})));
    Document* document = bench.create("a.xyz", with({{"SILENT", "TRUE"}, {"OVERRIDE_EXT", ".obj"}}));
    ASSERT_NE(nullptr, document);
    EXPECT_EQ("a.xyz", document->getFilename());
    EXPECT_EQ(1, recorder().count("findTemplateForPath a.xyz.obj"));
    EXPECT_EQ(1, recorder().count("doc1 doOpenDocument a.xyz"));
    EXPECT_EQ(0, bench.manager.getFileHistory()->getCount());
}

TEST(CreateDocument, AtTheLimitTheOldestIsClosedEvenIfItIsTheCurrentOne)
{
    Bench bench;
    bench.manager.setMaxDocsOpen(2);
    bench.open("a.obj");
    bench.open("b.obj");
    bench.application.setActiveDocument(bench.manager.findDocumentByPath("a.obj"));
    EXPECT_NE(nullptr, bench.create("c.obj"));
    EXPECT_EQ(nullptr, bench.manager.findDocumentByPath("a.obj"));
    EXPECT_NE(nullptr, bench.manager.findDocumentByPath("b.obj"));
    EXPECT_EQ(2, bench.manager.getNumDocuments());
}

TEST(CreateDocument, AtTheLimitARefusalOfTheOldestGivesNull)
{
    Bench bench;
    bench.manager.setMaxDocsOpen(1);
    bench.open("a.obj")->modify(true);
    bench.manager.confirmationResult = 0;
    EXPECT_EQ(nullptr, bench.create("b.obj"));
    EXPECT_NE(nullptr, bench.manager.findDocumentByPath("a.obj"));
    EXPECT_EQ(0, recorder().count("doc2 made"));
}

TEST(CreateDocument, ARequestWithoutATemplateClosesNothing)
{
    Bench bench;
    bench.manager.setMaxDocsOpen(1);
    bench.open("a.obj");
    EXPECT_EQ(nullptr, bench.create("b.xyz"));
    EXPECT_EQ(1, bench.manager.getNumDocuments());
}

TEST(CreateDocument, ANegativeLimitIsNone)
{
    Bench bench;
    bench.manager.setMaxDocsOpen(-1);
    for (int i = 0; i < 120; ++i)
        bench.create((std::to_string(i) + ".obj").c_str());
    EXPECT_EQ(120, bench.manager.getNumDocuments());
}

TEST(CreateDocument, AFileThatCannotBeLoadedGivesNullAndLeavesNothing)
{
    Bench bench;
    RecordingDocument::openResult = false;
    EXPECT_EQ(nullptr, bench.create("a.obj"));
    const vfTest::Lines lines = recorder().take();
    EXPECT_EQ("~doc1", lines.back());
    EXPECT_THAT(lines, testing::Contains("doc1 deleteAllViews"));
    EXPECT_THAT(lines, testing::Not(testing::Contains("history a.obj")));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    EXPECT_EQ(nullptr, bench.manager.getCurrentView());
}

TEST(CreateDocument, AnExceptionOfTheDocumentArrivesWrappedTwice)
{
    Bench bench;
    RecordingDocument::inOpen = [] { throw vfBase::BaseException("bad file"); };
    EXPECT_EQ("Exception in " + routine + ": Exception in " + routine + ": bad file", bench.raised("a.obj"));
    EXPECT_EQ(1, recorder().count("~doc1"));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(CreateDocument, AStandardExceptionOfTheDocumentIsNamedAsOne)
{
    Bench bench;
    RecordingDocument::inOpen = [] { throw std::runtime_error("no memory"); };
    EXPECT_EQ("Exception in " + routine + ": std::exception in " + routine + ": no memory",
              bench.raised("a.obj"));
}

TEST(CreateDocument, AnythingElseThatIsThrownIsWrappedToo)
{
    Bench bench;
    RecordingDocument::inNew = [] { throw 5; };
    EXPECT_EQ("Exception in " + routine + ": Unknown exception in " + routine,
              bench.raised("", with({{"NEWDOC", "TRUE"}})));
}

TEST(CreateDocument, ATypeNameThatIsNoDocumentArrivesWrappedOnce)
{
    RecordingApplication bench;
    new DocTemplate(&bench.manager, "Kind", "obj", "", "obj", "no such class", "vfTest::View", nullptr,
                    nullptr, 1, 0, Options());
    try {
        bench.manager.createDocument("a.obj", Options());
        FAIL();
    } catch (const vfBase::BaseException& exception) {
        EXPECT_EQ("Exception in " + routine + ": Doc type name does not represent vfApplication::Document!",
                  std::string(exception.what()));
    }
}

TEST(CreateDocument, AnExceptionOfTheSelectionIsWrappedOnce)
{
    struct Choosy : vfTest::RecordingManager
    {
        DocTemplate* findTemplateForPath(const char*) override { throw std::logic_error("choice"); }
    };
    RecordingApplication bench;
    auto* manager = new Choosy;
    bench.application.setDocManager(manager);
    makeTemplate(*manager);
    try {
        manager->createDocument("a.obj", Options());
        FAIL();
    } catch (const vfBase::BaseException& exception) {
        EXPECT_EQ("std::exception in " + routine + ": choice", std::string(exception.what()));
    }
}

TEST(UpdateDocument, LoadsAnotherFileIntoTheDocument)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    document->modify(true);
    recorder().take();
    const Options options;
    EXPECT_TRUE(bench.manager.updateDocument(document, "b.obj", options));
    EXPECT_THAT(recorder().take(),
                ElementsAre("selectDocumentType of 1", "doc1 onOpenDocument b.obj",
                            "doc1 doOpenDocument b.obj", "view1 onChangeFilename", "view1 onUpdate from none",
                            "watch b.obj", "view1 onChangeFilename", "history b.obj",
                            "view1 activated view1, before view1", "manager activates view1",
                            "callback created b.obj"));
    EXPECT_EQ("b.obj", document->getFilename());
    EXPECT_FALSE(document->isModified());
    EXPECT_TRUE(options.getPluginStringData("BUILD_SCENEGRAPH").empty());
    EXPECT_EQ("TRUE", RecordingDocument::lastOpenOptions.getPluginStringData("BUILD_SCENEGRAPH"));
}

TEST(UpdateDocument, RefusesNullAndAnEmptyPathAndAMissingTemplate)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    EXPECT_FALSE(bench.manager.updateDocument(nullptr, "b.obj", Options()));
    EXPECT_FALSE(bench.manager.updateDocument(document, "", Options()));
    EXPECT_FALSE(bench.manager.updateDocument(document, "b.xyz", with({{"SILENT", "TRUE"}})));
    EXPECT_TRUE(bench.manager.updateDocument(document, "b.xyz",
                                             with({{"SILENT", "TRUE"}, {"OVERRIDE_EXT", ".obj"}})));
    EXPECT_EQ(0, recorder().count("history b.xyz"));
}

TEST(UpdateDocument, WithNoVisibleTemplateIsFalse)
{
    RecordingApplication bench;
    makeTemplate(bench.manager, "obj", "obj", 2);
    RecordingDocument document;
    recorder().take();
    EXPECT_FALSE(bench.manager.updateDocument(&document, "a.obj", Options()));
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(UpdateDocument, APlainCallGoesToTheChoiceOfType)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    new DocTemplate(&bench.manager, "Other", "stl", "", "stl", "vfTest::Document", "other", nullptr,
                    &RecordingView::s_classInfo, 1, 0, Options());
    EXPECT_FALSE(bench.manager.updateDocument(document, "b.obj", Options()));
    EXPECT_EQ(1, recorder().count("selectDocumentTypeUser of 2"));
    EXPECT_TRUE(
        bench.manager.updateDocument(document, "b.obj", with({{"SILENT", "TRUE"}, {"NEWDOC", "TRUE"}})));
}

TEST(UpdateDocument, AFailedLoadRestoresTheNameAndTheTitleWithoutTellingTheViews)
{
    Bench bench;
    RecordingDocument* document = bench.open("/models/a.obj");
    RecordingDocument::openResult = false;
    EXPECT_FALSE(bench.manager.updateDocument(document, "b.obj", Options()));
    EXPECT_EQ("/models/a.obj", document->getFilename());
    EXPECT_EQ("a.obj", document->getTitle());
    EXPECT_EQ(0, recorder().count("view1 onChangeFilename"));
}

TEST(UpdateDocument, ToItsOwnPathActivatesItAndReadsNothing)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    EXPECT_TRUE(bench.manager.updateDocument(document, "a.obj", Options()));
    EXPECT_THAT(recorder().take(),
                ElementsAre("selectDocumentType of 1", "view1 activated view1, before view1",
                            "manager activates view1"));
}

TEST(UpdateDocument, ToAPathThatAnotherDocumentShowsActivatesThatOne)
{
    Bench bench;
    RecordingDocument* first = bench.open("a.obj");
    RecordingDocument* second = bench.open("b.obj");
    EXPECT_TRUE(bench.manager.updateDocument(second, "a.obj", Options()));
    EXPECT_EQ(first, bench.manager.getCurrentDocument());
    EXPECT_EQ("b.obj", second->getFilename());
    EXPECT_EQ(0, recorder().count("callback created a.obj"));
}

TEST(UpdateDocument, AnExceptionPassesAsItWasRaised)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    RecordingDocument::inOpen = [] { throw std::runtime_error("as raised"); };
    EXPECT_THROW(bench.manager.updateDocument(document, "b.obj", Options()), std::runtime_error);
    EXPECT_EQ("", document->getFilename());
    RecordingDocument::inOpen = nullptr;
}

TEST(UpdateDocument, KeepsTheTemplateThatMadeTheDocument)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    makeTemplate(bench.manager, "stl", "stl");
    EXPECT_TRUE(bench.manager.updateDocument(document, "b.stl", with({{"SILENT", "TRUE"}})));
    EXPECT_EQ(bench.kind, document->getDocumentTemplate());
    EXPECT_EQ(1, recorder().count("history b.stl"));
}

TEST(CreateView, MakesAFurtherViewFromTheOnlyVisibleTemplate)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    vfApplication::View* view = bench.manager.createView(document, Options());
    ASSERT_NE(nullptr, view);
    EXPECT_EQ(2u, document->getViewList().size());
    EXPECT_EQ("vfTest::View", view->getViewName());
}

TEST(CreateView, GivesNullWithoutATemplateOrWithTwoViewNamesOrARefusal)
{
    Bench bench;
    RecordingDocument* document = bench.open("a.obj");
    RecordingView::createResult = false;
    EXPECT_EQ(nullptr, bench.manager.createView(document, Options()));
    RecordingView::createResult = true;
    new DocTemplate(&bench.manager, "Other", "stl", "", "stl", "vfTest::Document", "other", nullptr,
                    &RecordingView::s_classInfo, 1, 0, Options());
    EXPECT_EQ(nullptr, bench.manager.createView(document, Options()));

    RecordingApplication empty;
    EXPECT_EQ(nullptr, empty.manager.createView(document, Options()));
}
