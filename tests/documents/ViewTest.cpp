// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"

#include <velaforge/base/ClassInfo.h>

#include <gmock/gmock.h>

#include <stdexcept>

using testing::ElementsAre;
using vfApplication::View;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingView;
using vfTest::slotOf;

namespace {

/// An application with one document that has two views.
struct Bench : RecordingApplication
{
    Bench()
    {
        makeTemplate(manager);
        document = open("a.obj");
        first = document->getFirstView();
        second = manager.createView(document, vfBase::Options());
        recorder().take();
    }
    vfTest::RecordingDocument* document;
    View* first;
    View* second;
};

} // namespace

TEST(View, WithoutADocumentItMayGoAndCannotBeActivated)
{
    RecordingApplication bench;
    RecordingView view;
    recorder().take();
    EXPECT_TRUE(view.close(true));
    view.activate(true);
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onClose forced"));
    EXPECT_EQ(nullptr, view.getDocument());
    EXPECT_FALSE(view.getViewOptions().isValid());
}

TEST(View, HearsOfItsActivationBeforeTheManager)
{
    Bench bench;
    bench.second->activate(true);
    EXPECT_THAT(recorder().take(),
                ElementsAre("view2 activated view2, before view1", "manager activates view2"));
    EXPECT_EQ(bench.second, bench.manager.getCurrentView());
    bench.first->activate(false);
    EXPECT_THAT(recorder().take(),
                ElementsAre("view1 deactivated view1, before view2", "manager deactivates view1"));
    EXPECT_EQ(bench.second, bench.manager.getCurrentView());
    bench.second->activate(false);
    EXPECT_EQ(nullptr, bench.manager.getCurrentView());
}

TEST(View, ClosingAnyViewClosesTheWholeDocumentByDefault)
{
    Bench bench;
    bench.document->modify(true);
    bench.manager.confirmationResult = 0;
    recorder().take();
    EXPECT_FALSE(bench.second->close(false));
    EXPECT_THAT(recorder().take(),
                ElementsAre("view2 onClose", "doc1 close", "doc1 onSaveModified", "askForUserConfirmation"));
    bench.manager.confirmationResult = 2;
    EXPECT_TRUE(bench.second->close(false));
    EXPECT_FALSE(bench.document->isModified());
}

TEST(View, ItsNameIsThatOfItsTemplate)
{
    Bench bench;
    bench.first->setViewName("my own");
    EXPECT_EQ("vfTest::View", bench.first->getViewName());
    EXPECT_EQ(&bench.manager, bench.first->getDocumentManager());
}

TEST(View, DeletingTheCurrentOneLeavesNoneAlsoIfOthersRemain)
{
    Bench bench;
    ASSERT_EQ(bench.first, bench.manager.getCurrentView());
    delete bench.first;
    EXPECT_THAT(recorder().take(),
                ElementsAre("~view1", "manager deactivates none", "doc1 onChangedViewList"));
    EXPECT_EQ(nullptr, bench.manager.getCurrentView());
    EXPECT_EQ(nullptr, bench.manager.getCurrentDocument());
    EXPECT_EQ(bench.second, bench.document->getFirstView());
}

TEST(View, AManagerThatThrowsWhenTheCurrentOneIsDeletedForgetsItAllTheSame)
{
    struct Throwing : vfApplication::DocManager
    {
        void activateView(View* view, bool active) override
        {
            if (!active)
                throw std::runtime_error("not now");
            DocManager::activateView(view, active);
        }
    };
    RecordingApplication bench;
    auto* manager = new Throwing;
    bench.application.setDocManager(manager);
    vfTest::makeTemplate(*manager);
    vfApplication::Document* document = manager->createDocument("a.obj", vfBase::Options());
    View* first = document->getFirstView();
    ASSERT_NE(nullptr, manager->createView(document, vfBase::Options()));
    manager->activateView(first, true);
    ASSERT_EQ(first, manager->getCurrentView());
    delete first;
    EXPECT_EQ(nullptr, manager->getCurrentView());
    EXPECT_TRUE(manager->containsDocument(document));
}

TEST(View, DeletingOneThatIsNotCurrentLeavesTheCurrentOne)
{
    Bench bench;
    delete bench.second;
    EXPECT_EQ(bench.first, bench.manager.getCurrentView());
    EXPECT_EQ(bench.document, bench.manager.getCurrentDocument());
}

TEST(View, DeletingTheLastOneDeletesTheDocument)
{
    Bench bench;
    delete bench.first;
    delete bench.second;
    EXPECT_EQ(1, recorder().count("~doc1"));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(View, OnClosingDocumentTellsTheApplication)
{
    Bench bench;
    bench.first->onClosingDocument();
    EXPECT_THAT(recorder().take(), ElementsAre("view1 onClosingDocument", "callback closing a.obj"));
}

TEST(View, RefusesItsCreationUnlessAClassOverridesThat)
{
    View view;
    EXPECT_FALSE(view.onCreate(nullptr, vfBase::Options()));
    EXPECT_NO_THROW(view.onActivateView(true, nullptr, nullptr));
    EXPECT_NO_THROW(view.onChangeFilename());
    EXPECT_NO_THROW(view.onUpdate(nullptr));
    EXPECT_NO_THROW(view.onDeselect(nullptr));
    EXPECT_NO_THROW(view.redraw());
}

TEST(View, KeepsTheOptionsThatItIsGiven)
{
    View view;
    vfBase::Options options;
    view.setViewOptions(options);
    options.setPluginStringData("key", "value");
    EXPECT_EQ("value", view.getViewOptions().getPluginStringData("key"));
}

TEST(View, ACopyIsNotEnteredInTheDocumentsList)
{
    Bench bench;
    const View copy(*bench.first);
    EXPECT_EQ(bench.document, copy.getDocument());
    EXPECT_EQ(2u, bench.document->getViewList().size());
    View assigned;
    assigned = copy;
    EXPECT_EQ(2u, bench.document->getViewList().size());
    assigned.setDocument(nullptr);
    View& alias = const_cast<View&>(copy);
    alias.setDocument(nullptr);
}

TEST(View, HasARecordThatAgreesWithItsClassId)
{
    EXPECT_STREQ("vfApplication::View", View::classId());
    EXPECT_STREQ("vfApplication::View", View::s_classInfo.getClassId());
    EXPECT_STREQ("View", View::s_classInfo.getClassName());
    EXPECT_STREQ("vfApplication", View::s_classInfo.getLibraryName());
    EXPECT_EQ(nullptr, View::s_classInfo.create());
    EXPECT_EQ(&vfBase::VfObject::s_classInfo, View::s_classInfo.getParent());
    EXPECT_EQ(&View::s_classInfo, View().getClassInfo());
}

TEST(View, OperationsKeepTheirSlots)
{
    EXPECT_EQ(0, slotOf(&View::getClassInfo));
    EXPECT_EQ(3, slotOf(&View::getUniqueId));
    EXPECT_EQ(4, slotOf(&View::activate));
    EXPECT_EQ(5, slotOf(&View::close));
    EXPECT_EQ(6, slotOf(&View::onActivateView));
    EXPECT_EQ(7, slotOf(&View::onChangeFilename));
    EXPECT_EQ(8, slotOf(&View::onClose));
    EXPECT_EQ(9, slotOf(&View::onClosingDocument));
    EXPECT_EQ(10, slotOf(&View::onCreate));
    EXPECT_EQ(11, slotOf(&View::setDocument));
    EXPECT_EQ(12, slotOf(&View::onUpdate));
    EXPECT_EQ(13, slotOf(&View::onDeselect));
    EXPECT_EQ(14, slotOf(&View::redraw));
    EXPECT_EQ(15, slotOf(&View::setViewOptions));
}
