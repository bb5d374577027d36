// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/FileHistory.h>

#include <osg/Notify>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using vfApplication::Document;
using vfBase::Options;
using vfBase::VfString;
using vfBase::WriteResult;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;
using vfTest::RecordingView;
using vfTest::slotOf;

namespace {

/// An application with one open document.
struct Bench : RecordingApplication
{
    explicit Bench(const char* path = "/models/a.obj")
    {
        kind = makeTemplate(manager);
        document = open(path);
    }

    vfApplication::DocTemplate* kind;
    RecordingDocument* document;
};

class Step : public vfApplication::CommandPrivate
{
public:
    using CommandPrivate::Do;
    using CommandPrivate::undo;
    bool canUndo() const override { return true; }
    bool Do(const vfBase::VfVariant&) override { return true; }
    bool undo(const vfBase::VfVariant&) override { return true; }
};

} // namespace

TEST(Document, StartsUnmodifiedUnsavedAndWithAHistory)
{
    RecordingDocument document;
    EXPECT_FALSE(document.isModified());
    EXPECT_FALSE(document.alreadySaved());
    EXPECT_FALSE(document.isSavedInternal());
    EXPECT_EQ("", document.getFilename());
    EXPECT_EQ("", document.getTitle());
    EXPECT_EQ(nullptr, document.getDocumentTemplate());
    EXPECT_EQ(nullptr, document.getDocumentManager());
    EXPECT_EQ(-1, document.getCommandProcessor()->getMaxCommands());
    EXPECT_EQ(0u, document.getViewList().size());
    EXPECT_FALSE(document.getCreateDocumentOptions().isValid());
    EXPECT_TRUE(document.getOpenDocumentOptions().isValid());
    EXPECT_TRUE(document.getSaveDocumentOptions().isValid());
    EXPECT_FALSE(document.getProject().isValid());
    document.updateProject();
}

TEST(Document, ItsClassIdDiffersFromItsRecordInOneLetter)
{
    EXPECT_STREQ("vfApplication::document", Document::classId());
    EXPECT_STREQ("vfApplication::Document", Document::s_classInfo.getClassId());
    EXPECT_STREQ("Document", Document::s_classInfo.getClassName());
    EXPECT_STREQ("vfApplication", Document::s_classInfo.getLibraryName());
    EXPECT_EQ(&vfBase::VfObject::s_classInfo, Document::s_classInfo.getParent());
    EXPECT_EQ(nullptr, Document::s_classInfo.create());
    const RecordingDocument document;
    EXPECT_EQ(&Document::s_classInfo, document.Document::getClassInfo());
}

TEST(Document, WithoutViewsItCannotBeActivatedAndHasNoFirstView)
{
    RecordingDocument document;
    document.activate();
    EXPECT_EQ(nullptr, document.getFirstView());
    EXPECT_FALSE(document.containsView(nullptr));
}

TEST(Document, WithoutViewsDeleteAllViewsDeletesItOnlyWhereTheManagerListsIt)
{
    Bench bench;
    auto* listed = new RecordingDocument;
    listed->setDocumentTemplate(bench.kind);
    bench.manager.addDocument(listed);
    RecordingDocument unlisted;
    unlisted.setDocumentTemplate(bench.kind);
    recorder().take();
    EXPECT_TRUE(listed->deleteAllViews());
    EXPECT_THAT(recorder().take(), ElementsAre("doc2 deleteAllViews", "~doc2"));
    EXPECT_TRUE(unlisted.deleteAllViews());
    EXPECT_THAT(recorder().take(), ElementsAre("doc3 deleteAllViews"));
}

TEST(Document, AViewIsAddedOnce)
{
    Bench bench;
    vfApplication::View* view = bench.document->getFirstView();
    EXPECT_TRUE(bench.document->addView(view));
    EXPECT_THAT(recorder().take(), IsEmpty());
    EXPECT_EQ(1u, bench.document->getViewList().size());
    EXPECT_TRUE(bench.document->containsView(view));
}

TEST(Document, RemovingAStrangerIsFalseAndChangesNothing)
{
    Bench bench;
    RecordingView stranger;
    recorder().take();
    EXPECT_FALSE(bench.document->removeView(&stranger));
    EXPECT_THAT(recorder().take(), IsEmpty());
}

TEST(Document, IsDeletedWhenItsLastViewIsRemoved)
{
    Bench bench;
    vfApplication::View* view = bench.document->getFirstView();
    EXPECT_TRUE(bench.document->removeView(view));
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 onChangedViewList", "~doc1"));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    view->setDocument(nullptr);
    delete view;
}

TEST(Document, ModifyTellsTheFirstViewAloneAndOnlyOfAChange)
{
    Bench bench;
    bench.manager.createView(bench.document, Options());
    recorder().take();
    bench.document->modify(true);
    bench.document->modify(true);
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onChangeFilename"));
    bench.document->modify(false);
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onChangeFilename"));
    RecordingDocument alone;
    EXPECT_NO_THROW(alone.modify(true));
    EXPECT_TRUE(alone.isModified());
}

TEST(Document, SetFilenameSetsTheTitleAndTellsAllViewsOnDemand)
{
    Bench bench;
    bench.manager.createView(bench.document, Options());
    recorder().take();
    bench.document->setFilename("/models/b.obj", false);
    EXPECT_THAT(recorder().take(), IsEmpty());
    EXPECT_EQ("b.obj", bench.document->getTitle());
    bench.document->setFilename("/models/c.obj", true);
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onChangeFilename", "view2 onChangeFilename"));
    bench.document->setFilename(bench.document->getFilename(), false);
    EXPECT_EQ("/models/c.obj", bench.document->getFilename());
}

TEST(Document, TellsAllViewsButTheSender)
{
    Bench bench;
    vfApplication::View* second = bench.manager.createView(bench.document, Options());
    recorder().take();
    bench.document->updateAllViews(nullptr);
    bench.document->updateAllViews(second);
    bench.document->deselectAllViews(nullptr);
    bench.document->deselectAllViews(second);
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onUpdate from none", "view2 onUpdate from none",
                                               "view1 onUpdate from view2", "view1 onDeselect from none",
                                               "view2 onDeselect from none", "view1 onDeselect from view2"));
}

TEST(Document, OpeningGoesThroughItsStepsInOrder)
{
    Bench bench;
    osg::setNotifyLevel(osg::FATAL);
    bench.document->setFilename("", false);
    bench.document->setDocumentSaved(false);
    vfBase::NotifyHandler::instance().install();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(bench.document->Document::onOpenDocument("/models/b.obj", Options()));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), MatchesRegex("Model loaded in: [0-9.e+-]+ ms\n"));
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 doOpenDocument /models/b.obj", "view1 onChangeFilename",
                                               "view1 onUpdate from none", "watch /models/b.obj"));
    EXPECT_EQ("/models/b.obj", bench.document->getFilename());
    EXPECT_TRUE(bench.document->alreadySaved());
}

TEST(Document, OpeningLeavesAFileNameAndTheModifiedFlag)
{
    Bench bench;
    bench.document->modify(true);
    EXPECT_TRUE(bench.document->onOpenDocument("/models/b.obj", Options()));
    EXPECT_EQ("/models/a.obj", bench.document->getFilename());
    EXPECT_TRUE(bench.document->isModified());
}

TEST(Document, AFailedLoadChangesNothing)
{
    Bench bench;
    bench.document->setFilename("", false);
    bench.document->setDocumentSaved(false);
    RecordingDocument::openResult = false;
    EXPECT_FALSE(bench.document->onOpenDocument("/models/b.obj", Options()));
    EXPECT_FALSE(bench.document->alreadySaved());
    EXPECT_EQ("", bench.document->getFilename());
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 onOpenDocument /models/b.obj", "doc1 doOpenDocument /models/b.obj"));
}

TEST(Document, WithNotificationDisabledItTellsNoDuration)
{
    Bench bench;
    vfBase::NotifyHandler::instance().install();
    vfBase::NotifyHandler::instance().setNotifyEnabled(false);
    testing::internal::CaptureStderr();
    bench.document->onOpenDocument("b.obj", Options());
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(Document, OpeningKeepsItsOptionsAndClearsTheMonitor)
{
    Bench bench;
    vfBase::NotifyHandler::instance().install();
    testing::internal::CaptureStderr();
    osg::notify(osg::WARN) << "from before" << std::endl;
    testing::internal::GetCapturedStderr();
    Options options;
    options.setPluginStringData("key", "value");
    bench.document->onOpenDocument("b.obj", options);
    EXPECT_EQ("value", bench.document->getOpenDocumentOptions().getPluginStringData("key"));
    EXPECT_EQ(0u, vfBase::getMonitorMessages().size());
}

TEST(Document, ANewOneGetsAGeneratedNameUnlessItHasATitle)
{
    Bench bench;
    bench.document->setDocumentSaved(true);
    EXPECT_TRUE(bench.document->onNewDocument());
    EXPECT_FALSE(bench.document->alreadySaved());
    EXPECT_EQ("/models/a.obj", bench.document->getFilename());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 onNewDocument"));
    bench.document->setTitle("");
    EXPECT_TRUE(bench.document->onNewDocument());
    EXPECT_EQ("unnamed1", bench.document->getFilename());
    EXPECT_EQ("unnamed1", bench.document->getTitle());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 onNewDocument", "view1 onChangeFilename"));
}

TEST(Document, SavingGoesThroughItsStepsInOrder)
{
    Bench bench;
    bench.manager.createView(bench.document, Options());
    bench.document->getCommandProcessor()->submit(vfApplication::Command(new Step), true);
    bench.document->modify(true);
    recorder().take();
    EXPECT_TRUE(bench.document->save().success());
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 onSaveDocument /models/a.obj", "doc1 doSaveDocument /models/a.obj",
                            "view1 onChangeFilename", "view1 onChangeFilename", "view2 onChangeFilename"));
    EXPECT_FALSE(bench.document->isModified());
    EXPECT_FALSE(bench.document->getCommandProcessor()->isDirty());
    EXPECT_TRUE(bench.document->isSavedInternal());
    EXPECT_FALSE(bench.document->getSaveDocumentOptions().isValid());
}

TEST(Document, AFailedSaveChangesNothingButTheInternalFlag)
{
    Bench bench;
    bench.document->getCommandProcessor()->submit(vfApplication::Command(new Step), true);
    bench.document->modify(true);
    bench.document->setDocumentSaved(false);
    RecordingDocument::saveStatus = 3;
    recorder().take();
    EXPECT_TRUE(bench.document->onSaveDocument("/other/b.obj", Options()).error());
    EXPECT_TRUE(bench.document->isModified());
    EXPECT_FALSE(bench.document->alreadySaved());
    EXPECT_TRUE(bench.document->isSavedInternal());
    EXPECT_TRUE(bench.document->getCommandProcessor()->isDirty());
    EXPECT_EQ("/models/a.obj", bench.document->getFilename());
    EXPECT_EQ(0, recorder().count("view1 onChangeFilename"));
    bench.document->modify(
        false); // a document that cannot be saved would be left without an owner at the end
}

TEST(Document, SavingUnderAnEmptyPathIsNoErrorAndWritesNothing)
{
    Bench bench;
    bench.document->modify(true);
    recorder().take();
    EXPECT_EQ(WriteResult::Written, bench.document->onSaveDocument("", Options()).getStatus());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 onSaveDocument "));
    EXPECT_TRUE(bench.document->isModified());
    EXPECT_TRUE(bench.document->isSavedInternal());
}

TEST(Document, SavingWithoutAHistoryWorks)
{
    Bench bench;
    vfApplication::CommandProcessor* former = bench.document->getCommandProcessor();
    bench.document->setCommandProcessor(nullptr);
    EXPECT_TRUE(bench.document->save().success());
    bench.document->setCommandProcessor(former);
}

TEST(Document, SavingANewOneAsksForAPath)
{
    Bench bench;
    Document* document = bench.application.newDocument();
    recorder().take();
    EXPECT_EQ(WriteResult::NoPath, document->save().getStatus());
    EXPECT_EQ(1, recorder().count("doc2 saveAs"));
}

TEST(Document, SavingOneThatIsMarkedAsSavedButHasNoNameAsksForAPath)
{
    Bench bench;
    bench.document->setFilename("", false);
    bench.document->setDocumentSaved(true);
    EXPECT_EQ(WriteResult::NoPath, bench.document->save().getStatus());
    EXPECT_EQ(1, recorder().count("doc1 saveAs"));
}

TEST(Document, SaveAsGoesThroughItsStepsInOrder)
{
    Bench bench;
    bench.manager.savePath = "/saved/b.obj";
    EXPECT_TRUE(bench.document->saveAs(Options()).success());
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 saveAs", "selectDocumentSavePath /models|a|obj|obj",
                            "doc1 onSaveDocument /saved/b.obj", "doc1 doSaveDocument /saved/b.obj",
                            "view1 onChangeFilename", "view1 onChangeFilename", "history /saved/b.obj"));
    EXPECT_EQ("/saved/b.obj", bench.document->getFilename());
    EXPECT_EQ("b.obj", bench.document->getTitle());
    EXPECT_EQ("/saved/b.obj", bench.manager.getFileHistory()->getHistoryFile(0));
}

TEST(Document, SaveAsUnderAForeignExtensionStaysOutOfTheHistory)
{
    Bench bench;
    bench.manager.savePath = "/saved/b.xyz";
    EXPECT_TRUE(bench.document->saveAs(Options()).success());
    EXPECT_EQ(0, recorder().count("history /saved/b.xyz"));
    EXPECT_EQ("/saved/b.xyz", bench.document->getFilename());
}

TEST(Document, SaveAsBeginsInTheTemplatesDirectoryThenTheFilesThenTheLastOne)
{
    Bench bench;
    bench.kind->setDirectory("/preferred");
    static_cast<Document*>(bench.document)->saveAs();
    EXPECT_EQ(1, recorder().count("selectDocumentSavePath /preferred|a|obj|obj"));
    bench.kind->setDirectory("");
    bench.document->setFilename("plain.obj", false);
    bench.manager.setLastDirectory("/last");
    static_cast<Document*>(bench.document)->saveAs();
    EXPECT_EQ(1, recorder().count("selectDocumentSavePath /last|plain|obj|obj"));
}

TEST(Document, SaveAsWithoutATemplateIsStatus2AndWithoutAPathStatus4)
{
    RecordingDocument lone;
    EXPECT_EQ(WriteResult::NoTemplate, lone.saveAs(Options()).getStatus());
    Bench bench;
    EXPECT_EQ(WriteResult::NoPath, bench.document->saveAs(Options()).getStatus());
    EXPECT_EQ("/models/a.obj", bench.document->getFilename());
    EXPECT_FALSE(bench.document->isSavedInternal());
}

TEST(Document, SaveAsHandsTheDialogsOptionsToTheWriterAndLeavesTheCallersAlone)
{
    struct Dialog : vfTest::RecordingManager
    {
        VfString selectDocumentSavePath(const char*, const char*, const char*, const char*,
                                        Options& options) override
        {
            EXPECT_TRUE(options.isValid());
            options.setPluginStringData("quality", "high");
            return "/saved/b.obj";
        }
    };
    RecordingApplication bench;
    auto* manager = new Dialog;
    bench.application.setDocManager(manager);
    makeTemplate(*manager);
    Document* document = manager->createDocument("a.obj", Options());
    const Options options;
    EXPECT_TRUE(document->saveAs(options).success());
    EXPECT_EQ("high", document->getSaveDocumentOptions().getPluginStringData("quality"));
    EXPECT_EQ("", options.getPluginStringData("quality"));
    EXPECT_TRUE(document->saveAs(Options::invalid()).success());
    EXPECT_EQ("high", document->getSaveDocumentOptions().getPluginStringData("quality"));
}

TEST(Document, AFailedSaveAsReturnsTheError)
{
    Bench bench;
    bench.manager.savePath = "/saved/b.obj";
    RecordingDocument::saveStatus = 3;
    EXPECT_EQ(WriteResult::WriteFailed, bench.document->saveAs(Options()).getStatus());
    EXPECT_EQ("/models/a.obj", bench.document->getFilename());
    EXPECT_EQ(0, recorder().count("history /saved/b.obj"));
}

TEST(Document, UnsavedChangesAreAskedAboutAndTheAnswerCounts)
{
    Bench bench;
    EXPECT_TRUE(bench.document->onSaveModified());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 onSaveModified"));

    bench.document->modify(true);
    bench.manager.confirmationResult = 0;
    EXPECT_FALSE(bench.document->onSaveModified());
    EXPECT_TRUE(bench.document->isModified());

    bench.manager.confirmationResult = 3;
    EXPECT_TRUE(bench.document->onSaveModified());
    EXPECT_TRUE(bench.document->isModified());

    bench.manager.confirmationResult = 2;
    recorder().take();
    EXPECT_TRUE(bench.document->onSaveModified());
    EXPECT_FALSE(bench.document->isModified());
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 onSaveModified", "askForUserConfirmation", "view1 onChangeFilename"));

    bench.document->modify(true);
    bench.manager.confirmationResult = 1;
    EXPECT_TRUE(bench.document->onSaveModified());
    EXPECT_EQ(1, recorder().count("doc1 doSaveDocument /models/a.obj"));
    EXPECT_FALSE(bench.document->isModified());
}

TEST(Document, ASaveAsThatEndsWithoutAPathStopsTheClose)
{
    Bench bench;
    bench.document->setDocumentSaved(false);
    bench.document->modify(true);
    bench.manager.confirmationResult = 1;
    EXPECT_FALSE(bench.document->close());
    EXPECT_EQ(0, recorder().count("unwatch /models/a.obj"));
    EXPECT_EQ(0, recorder().count("doc1 onCloseDocument"));
    bench.document->modify(
        false); // a document that cannot be saved would be left without an owner at the end
}

TEST(Document, ClosingGoesThroughItsStepsInOrderAndDeletesNothing)
{
    Bench bench;
    bench.manager.createView(bench.document, Options());
    bench.document->modify(true);
    bench.manager.confirmationResult = 7; // neither saved nor discarded
    recorder().take();
    EXPECT_TRUE(bench.document->close());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 close", "doc1 onSaveModified", "askForUserConfirmation",
                                               "unwatch /models/a.obj", "doc1 onCloseDocument",
                                               "view1 onClosingDocument", "callback closing /models/a.obj",
                                               "view2 onClosingDocument", "callback closing /models/a.obj",
                                               "doc1 deleteContents", "view1 onChangeFilename"));
    EXPECT_FALSE(bench.document->isModified());
    EXPECT_EQ(2u, bench.document->getViewList().size());
}

TEST(Document, DeleteAllViewsDeletesNothingWhenAViewRefuses)
{
    Bench bench;
    RecordingView::closesDocument = false;
    RecordingView::closeResult = false;
    EXPECT_FALSE(bench.document->deleteAllViews());
    EXPECT_EQ(1u, bench.document->getViewList().size());
    RecordingView::closeResult = true;
    bench.manager.createView(bench.document, Options());
    recorder().take();
    EXPECT_TRUE(bench.document->deleteAllViews());
    EXPECT_THAT(recorder().take(),
                ElementsAre("doc1 deleteAllViews", "view1 onClose forced", "view2 onClose forced", "~view1",
                            "manager deactivates none", "doc1 onChangedViewList", "~view2",
                            "manager deactivates none", "doc1 onChangedViewList", "~doc1"));
}

TEST(Document, RevertReloadsTheFileInOrderAndLeavesTheHistory)
{
    Bench bench;
    bench.document->getCommandProcessor()->submit(vfApplication::Command(new Step), true);
    bench.document->modify(true);
    recorder().take();
    EXPECT_TRUE(bench.document->revert());
    EXPECT_THAT(recorder().take(), ElementsAre("askForConfirmRevert", "doc1 doOpenDocument /models/a.obj",
                                               "view1 onChangeFilename", "view1 onUpdate from none"));
    EXPECT_FALSE(bench.document->isModified());
    EXPECT_TRUE(bench.document->getCommandProcessor()->canUndo());
}

TEST(Document, RevertThatIsNotWantedOrFailsChangesNothing)
{
    Bench bench;
    bench.document->modify(true);
    bench.manager.revertResult = 0;
    recorder().take();
    EXPECT_FALSE(bench.document->confirmRevert());
    EXPECT_FALSE(bench.document->revert());
    EXPECT_EQ(0, recorder().count("doc1 doOpenDocument /models/a.obj"));
    bench.manager.revertResult = 1;
    RecordingDocument::openResult = false;
    EXPECT_FALSE(bench.document->revert());
    EXPECT_TRUE(bench.document->isModified());
}

TEST(Document, RevertOfOneThatNeverHadAFileUsesItsGeneratedName)
{
    Bench bench;
    auto* document = static_cast<RecordingDocument*>(bench.application.newDocument());
    recorder().take();
    EXPECT_TRUE(document->revert());
    EXPECT_EQ(1, recorder().count("doc2 doOpenDocument unnamed1"));
}

TEST(Document, RevertUsesTheOptionsOfTheLastLoad)
{
    Bench bench;
    Options options;
    options.setPluginStringData("key", "value");
    bench.document->onOpenDocument("/models/a.obj", options);
    bench.document->revert();
    EXPECT_EQ("value", RecordingDocument::lastOpenOptions.getPluginStringData("key"));
}

TEST(Document, HasANameForPeople)
{
    RecordingDocument document;
    EXPECT_EQ("unnamed", document.getUserReadableName());
    document.setFilename("/models/a.obj", false);
    EXPECT_EQ("a.obj", document.getUserReadableName());
    document.setTitle("");
    EXPECT_EQ("a.obj", document.getUserReadableName());
    document.setTitle("The boat");
    EXPECT_EQ("The boat", document.getUserReadableName());
}

TEST(Document, LeavesItsManagerAndDeletesItsHistoryAtItsEnd)
{
    Bench bench;
    auto* lone = new RecordingDocument;
    lone->setDocumentTemplate(bench.kind);
    bench.manager.addDocument(lone);
    delete lone;
    EXPECT_EQ(1, bench.manager.getNumDocuments());
    const RecordingDocument document;
    const std::unique_ptr<vfApplication::CommandProcessor> made(
        const_cast<RecordingDocument&>(document).onCreateCommandProcessor());
    EXPECT_EQ(-1, made->getMaxCommands());
    EXPECT_NE(document.getCommandProcessor(), made.get());
}

TEST(Document, GivesTheOptionsOfItsTemplate)
{
    Bench bench;
    EXPECT_EQ(bench.kind->getCreateDocumentOptions().getImp(),
              bench.document->getCreateDocumentOptions().getImp());
}

TEST(Document, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&Document::getClassInfo));
    EXPECT_EQ(3, slotOf(&Document::getUniqueId));
    EXPECT_EQ(4, slotOf(&Document::addView));
    EXPECT_EQ(5, slotOf(&Document::close));
    EXPECT_EQ(6, slotOf(&Document::deleteAllViews));
    EXPECT_EQ(7, slotOf(&Document::deleteContents));
    EXPECT_EQ(8, slotOf(&Document::getDocumentTemplate));
    EXPECT_EQ(9, slotOf(&Document::getDocumentManager));
    EXPECT_EQ(10, slotOf(&Document::getCommandProcessor));
    EXPECT_EQ(11, slotOf(&Document::onCreateCommandProcessor));
    EXPECT_EQ(12, slotOf(&Document::setCommandProcessor));
    EXPECT_EQ(13, slotOf(&Document::getUserReadableName));
    EXPECT_EQ(14, slotOf(&Document::isModified));
    EXPECT_EQ(15, slotOf(&Document::onCreate));
    EXPECT_EQ(16, slotOf(&Document::onNewDocument));
    EXPECT_EQ(17, slotOf(&Document::onOpenDocument));
    EXPECT_EQ(18, slotOf(&Document::onSaveDocument));
    EXPECT_EQ(19, slotOf(&Document::onSaveModified));
    EXPECT_EQ(20, slotOf(&Document::onCloseDocument));
    EXPECT_EQ(21, slotOf(&Document::onChangedViewList));
    EXPECT_EQ(22, slotOf(&Document::removeView));
    EXPECT_EQ(23, slotOf(&Document::save));
    EXPECT_EQ(24, slotOf(&Document::saveAs));
    EXPECT_EQ(25, slotOf(&Document::confirmRevert));
    EXPECT_EQ(26, slotOf(&Document::revert));
    EXPECT_EQ(27, slotOf(&Document::onChangeFilename));
    EXPECT_EQ(28, slotOf(&Document::updateAllViews));
    EXPECT_EQ(29, slotOf(&Document::deselectAllViews));
    EXPECT_EQ(30, slotOf(&Document::concreteDocumentOperation));
    EXPECT_EQ(31, slotOf(&Document::getProject));
    EXPECT_EQ(32, slotOf(&Document::updateProject));
    struct Open : Document
    {
        using Document::doOpenDocument;
        using Document::doSaveDocument;
    };
    EXPECT_EQ(33, slotOf(&Open::doOpenDocument));
    EXPECT_EQ(34, slotOf(&Open::doSaveDocument));
}
