// SPDX-License-Identifier: MIT
// What callbacks of documents and views may do while they are called.
#include "support/RecordingApplication.h"

#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vfApplication::Document;
using vfApplication::View;
using vfBase::Options;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;
using vfTest::RecordingView;

namespace {

/// A view that does in a notification what a test tells it.
class ActingView : public View
{
public:
    static const vfBase::ClassInfo s_classInfo;

    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    bool onCreate(Document*, const Options&) override { return accepts; }
    void onUpdate(View*) override { act("onUpdate"); }
    void onDeselect(View*) override { act("onDeselect"); }
    void onChangeFilename() override { act("onChangeFilename"); }
    void onActivateView(bool, View*, View*) override { act("onActivateView"); }
    void onClosingDocument() override
    {
        act("onClosingDocument");
        View::onClosingDocument();
    }

    static void reset()
    {
        accepts = true;
        told = 0;
        inHook = nullptr;
    }

    static bool accepts;
    static int told;
    static std::string hook;
    static std::function<void(ActingView&)> inHook;

private:
    void act(const char* reached)
    {
        if (hook != reached)
            return;
        ++told;
        if (inHook)
            inHook(*this);
    }
};

bool ActingView::accepts = true;
int ActingView::told = 0;
std::string ActingView::hook;
std::function<void(ActingView&)> ActingView::inHook;

const vfBase::ClassInfo ActingView::s_classInfo("callbacks", "ActingView", "callbacks::ActingView",
                                                &View::s_classInfo, nullptr, sizeof(ActingView),
                                                []() -> vfBase::VfObject* { return new ActingView; });

struct CallbackBench : RecordingApplication
{
    CallbackBench()
    {
        ActingView::reset();
        new vfApplication::DocTemplate(&manager, "acting", "obj", "", "obj", "vfTest::Document",
                                       "callbacks::ActingView", nullptr, &ActingView::s_classInfo, 1, 0,
                                       Options());
    }

    /// @return a document with @p views views
    Document* open(const char* path, int views)
    {
        Document* document = manager.createDocument(path, Options());
        for (int i = 1; i < views; ++i)
            manager.createView(document, Options());
        return document;
    }

    void closeIn(const char* hook, Document* document)
    {
        ActingView::hook = hook;
        ActingView::inHook = [this, document](ActingView&) { manager.closeDocument(document, true); };
    }
};

} // namespace

TEST(Callbacks, AViewThatRefusesItsCreationCostsTheDocumentOnce)
{
    CallbackBench bench;
    ActingView::accepts = false;
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.obj", Options()));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(Callbacks, ADocumentIsStillThereForItsOwnOnCreateWhenAViewRefuses)
{
    struct Curious : RecordingDocument
    {
        bool onCreate(const vfBase::VfString& path, const Options& options) override
        {
            const bool isMade = RecordingDocument::onCreate(path, options);
            vfTest::record(name() + (isMade ? " has a view" : " has none"));
            return isMade;
        }
    };
    CallbackBench bench;
    ActingView::accepts = false;
    struct Kind : vfApplication::DocTemplate
    {
        using DocTemplate::DocTemplate;
        Document* doCreateDocument(const Options&) override { return new Curious; }
    };
    new Kind(&bench.manager, "curious", "cur", "", "cur", "", "", nullptr, &ActingView::s_classInfo, 1, 0,
             Options());
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.cur", Options()));
    EXPECT_EQ(1, recorder().count("doc1 has none"));
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(Callbacks, ADocumentThatAViewClosesInOnUpdateIsGone)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    bench.closeIn("onUpdate", document);
    ActingView::told = 0;
    document->updateAllViews(nullptr);
    EXPECT_EQ(1, ActingView::told);
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(Callbacks, ADocumentThatAViewClosesInOnDeselectIsGone)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    bench.closeIn("onDeselect", document);
    document->deselectAllViews(nullptr);
    EXPECT_EQ(1, ActingView::told);
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(Callbacks, ADocumentThatAViewClosesInOnChangeFilenameIsGone)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    bench.closeIn("onChangeFilename", document);
    document->setFilename("b.obj", true);
    EXPECT_EQ(1, ActingView::told);
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(Callbacks, ADocumentThatAViewClosesWhileItIsOpenedIsNotReturned)
{
    CallbackBench bench;
    ActingView::hook = "onUpdate";
    ActingView::inHook = [&bench](ActingView& view) {
        bench.manager.closeDocument(view.getDocument(), true);
    };
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.obj", Options()));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(Callbacks, AViewThatDeletesItselfKeepsNoOtherFromBeingTold)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    ActingView::hook = "onUpdate";
    ActingView::told = 0;
    ActingView::inHook = [](ActingView& view) {
        if (ActingView::told == 1)
            delete &view;
    };
    document->updateAllViews(nullptr);
    EXPECT_EQ(3, ActingView::told);
    EXPECT_EQ(2u, document->getViewList().size());
}

TEST(Callbacks, AViewThatDeletesItsNeighbourIsToldOnce)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    ActingView::hook = "onUpdate";
    ActingView::told = 0;
    std::vector<View*> order;
    ActingView::inHook = [&](ActingView& view) {
        order.push_back(&view);
        if (order.size() == 2)
            delete order.front();
    };
    document->updateAllViews(nullptr);
    EXPECT_EQ(3, ActingView::told);
}

TEST(Callbacks, TheSenderOfAnUpdateThatIsDeletedMeanwhileIsNotNamedToTheNextView)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 3);
    struct Listener : View
    {
        bool onCreate(Document*, const Options&) override { return true; }
        void onUpdate(View* sender) override { senders->push_back(sender); }
        std::vector<View*>* senders = nullptr;
    };
    std::vector<View*> senders;
    auto* last = new Listener;
    last->senders = &senders;
    last->setDocument(document);
    View* sender = document->getFirstView();
    ActingView::hook = "onUpdate";
    ActingView::inHook = [&](ActingView&) {
        delete sender;
        ActingView::inHook = nullptr;
    };
    document->updateAllViews(sender);
    EXPECT_THAT(senders, ElementsAre(nullptr));
}

TEST(Callbacks, ClosingADocumentThatIsClosingIsRefusedAndItClosesOnce)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 1);
    bool answer = true;
    ActingView::hook = "onClosingDocument";
    ActingView::inHook = [&](ActingView&) { answer = bench.manager.closeDocument(document, false); };
    recorder().take();
    EXPECT_TRUE(bench.manager.closeDocument(document, false));
    EXPECT_FALSE(answer);
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(Callbacks, AnApplicationThatOpensAFileWheneverOneClosesComesToAnEnd)
{
    CallbackBench bench;
    bench.open("a.obj", 1);
    int tries = 0;
    ActingView::hook = "onClosingDocument";
    ActingView::inHook = [&](ActingView&) {
        if (++tries < 100)
            bench.manager.createDocument("b" + std::to_string(tries) + ".obj", Options());
    };
    EXPECT_TRUE(bench.manager.closeDocuments(false));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    EXPECT_LT(tries, 10);
}

TEST(Callbacks, AViewThatDeletesItselfWhileItIsActivatedIsNotTheCurrentOne)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 2);
    ActingView::hook = "onActivateView";
    ActingView::inHook = [](ActingView& view) { delete &view; };
    document->getViewList().last()->activate(true);
    EXPECT_EQ(1u, document->getViewList().size());
    EXPECT_EQ(document->getFirstView(), bench.manager.getCurrentView());
}

TEST(Callbacks, ADocumentThatTheCallbackClosesIsNotReturned)
{
    struct Closing : vfTest::RecordingCallback
    {
        void onDocumentCreated(Document* document) override { manager->closeDocument(document, true); }
        vfApplication::DocManager* manager = nullptr;
    };
    CallbackBench bench;
    Closing callback;
    callback.manager = &bench.manager;
    bench.application.registerCallback(&callback);
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.obj", Options()));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    bench.application.registerCallback(&bench.callback);
}

TEST(Callbacks, ACommandMayCloseItsDocument)
{
    struct Close : vfApplication::CommandPrivate
    {
        bool Do(const vfBase::VfVariant&) override
        {
            vfApplication::Application& application = *vfApplication::Application::instance(false);
            return application.closeDocument(application.getActiveDocument());
        }
    };
    CallbackBench bench;
    Document* document = bench.open("a.obj", 1);
    EXPECT_TRUE(document->getCommandProcessor()->submit(vfApplication::Command(new Close), true));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

namespace {

/// Without a record of its own it answers with that of Document, which makes nothing.
struct Unrecorded : Document
{
    void concreteDocumentOperation() override {}
};

const vfBase::ClassInfo unrecorded("callbacks", "Unrecorded", "callbacks::Unrecorded", &Document::s_classInfo,
                                   nullptr, sizeof(Unrecorded),
                                   []() -> vfBase::VfObject* { return new Unrecorded; });

/// Without a record of its own it answers with that of its parent, which makes parents.
struct Derived : RecordingDocument
{};

const vfBase::ClassInfo derived("callbacks", "Derived", "callbacks::Derived", &RecordingDocument::s_classInfo,
                                nullptr, sizeof(Derived), []() -> vfBase::VfObject* { return new Derived; });

} // namespace

TEST(Callbacks, AClassWithoutARecordOfItsOwnIsMadeAgainAndAgain)
{
    CallbackBench bench;
    new vfApplication::DocTemplate(&bench.manager, "", "one", "", "one", "callbacks::Unrecorded",
                                   "callbacks::ActingView", nullptr, nullptr, 1, 0, Options());
    new vfApplication::DocTemplate(&bench.manager, "", "two", "", "two", "callbacks::Derived",
                                   "callbacks::ActingView", nullptr, nullptr, 1, 0, Options());
    for (const char* path : {"a.one", "b.one", "c.one"})
        EXPECT_NE(nullptr, dynamic_cast<Unrecorded*>(bench.manager.createDocument(path, Options()))) << path;
    for (const char* path : {"a.two", "b.two"})
        EXPECT_NE(nullptr, dynamic_cast<Derived*>(bench.manager.createDocument(path, Options()))) << path;
}

TEST(Callbacks, ADocumentThatThrowsWhileTheApplicationEndsCostsNoOtherItsSaving)
{
    struct Throwing : RecordingDocument
    {
        bool deleteContents() override { throw std::runtime_error("no contents"); }
    };
    struct Kind : vfApplication::DocTemplate
    {
        using DocTemplate::DocTemplate;
        Document* doCreateDocument(const Options&) override { return new Throwing; }
    };
    {
        CallbackBench bench;
        new Kind(&bench.manager, "throwing", "thr", "", "thr", "", "", nullptr, &ActingView::s_classInfo, 1,
                 0, Options());
        bench.manager.createDocument("a.thr", Options());
        bench.manager.createDocument("b.obj", Options())->modify(true);
        recorder().take();
    }
    EXPECT_EQ(1, recorder().count("doc2 doSaveDocument b.obj"));
    EXPECT_EQ(1, recorder().count("~doc1"));
    EXPECT_EQ(1, recorder().count("~doc2"));
}

TEST(Callbacks, ADocumentThatThrowsInOnCreateLeavesNoViewBehind)
{
    struct Throwing : RecordingDocument
    {
        bool onCreate(const vfBase::VfString& path, const Options& options) override
        {
            RecordingDocument::onCreate(path, options);
            throw std::runtime_error("after the view was made");
        }
    };
    struct Kind : vfApplication::DocTemplate
    {
        using DocTemplate::DocTemplate;
        Document* doCreateDocument(const Options&) override { return new Throwing; }
    };
    CallbackBench bench;
    new Kind(&bench.manager, "throwing", "thr", "", "thr", "", "", nullptr, &RecordingView::s_classInfo, 1, 0,
             Options());
    recorder().take();
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.thr", Options()));
    EXPECT_EQ(1, recorder().count("~view1"));
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(Callbacks, DeletingADocumentLeavesItsViewsWithoutOne)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 1);
    const std::unique_ptr<View> view(document->getFirstView());
    delete document;
    EXPECT_EQ(nullptr, view->getDocument());
    EXPECT_EQ(nullptr, bench.manager.getCurrentView());
}

TEST(Callbacks, AViewThatWasGivenToAnotherDocumentLeavesBoth)
{
    CallbackBench bench;
    Document* first = bench.open("a.obj", 2);
    Document* second = bench.open("b.obj", 1);
    View* view = first->getFirstView();
    view->setDocument(second);
    EXPECT_TRUE(first->containsView(view));
    delete view;
    EXPECT_EQ(1u, first->getViewList().size());
    EXPECT_EQ(1u, second->getViewList().size());
}

TEST(Callbacks, DeletingATemplateLeavesItsDocumentsWithoutAManager)
{
    CallbackBench bench;
    Document* document = bench.open("a.obj", 1);
    delete document->getDocumentTemplate();
    EXPECT_EQ(nullptr, document->getDocumentTemplate());
    EXPECT_EQ(nullptr, bench.manager.getCurrentView());
    EXPECT_EQ(0, bench.manager.getNumDocuments());
    delete document->getFirstView();
    EXPECT_EQ(1, recorder().count("~doc1"));
}

TEST(Callbacks, CopiesOfADocumentMayAllBeDestroyed)
{
    const RecordingDocument first;
    const RecordingDocument second(first);
    RecordingDocument third;
    third = second;
    EXPECT_EQ(first.getCommandProcessor(), second.getCommandProcessor());
    EXPECT_EQ(first.getCommandProcessor(), third.getCommandProcessor());
}

TEST(Callbacks, CopiesOfAManagerMayAllBeDestroyed)
{
    vfApplication::DocManager first;
    const vfApplication::DocManager second(first);
    vfApplication::DocManager third;
    third = second;
    EXPECT_EQ(first.getFileHistory(), third.getFileHistory());
}

TEST(Callbacks, ReplacingTheManagerWhileItOpensADocumentEndsTheOpening)
{
    struct Replacing : vfTest::RecordingCallback
    {
        void onDocumentCreated(Document*) override
        {
            vfApplication::Application::instance(false)->setDocManager(new vfTest::RecordingManager);
        }
    };
    CallbackBench bench;
    Replacing callback;
    bench.application.registerCallback(&callback);
    EXPECT_EQ(nullptr, bench.manager.createDocument("a.obj", Options()));
    EXPECT_EQ(0u, bench.application.getNumDocuments());
    bench.application.registerCallback(&bench.callback);
}

TEST(Callbacks, UpdatingAnOddNumberOfDocumentsEndsBehindTheLast)
{
    CallbackBench bench;
    bench.open("a.obj", 1);
    ActingView::hook = "onUpdate";
    ActingView::told = 0;
    bench.application.onUpdate();
    EXPECT_EQ(1, ActingView::told);
}
