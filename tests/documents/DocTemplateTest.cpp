// SPDX-License-Identifier: MIT
#include "support/RecordingApplication.h"
#include "support/Slots.h"

#include <velaforge/base/BaseException.h>
#include <velaforge/base/ClassInfo.h>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

using testing::ElementsAre;
using vfApplication::DocManager;
using vfApplication::DocTemplate;
using vfApplication::Document;
using vfApplication::View;
using vfBase::Options;
using vfBase::VfString;
using vfTest::makeTemplate;
using vfTest::recorder;
using vfTest::RecordingApplication;
using vfTest::RecordingDocument;
using vfTest::RecordingView;
using vfTest::slotOf;

namespace {

/// A template for tests of the filter alone.
bool matches(const char* filter, const char* extension, const char* path)
{
    DocManager manager;
    return makeTemplate(manager, filter, extension)->fileMatchesTemplate(path);
}

DocTemplate* templateOf(DocManager& manager, const char* document, const char* view,
                        const vfBase::ClassInfo* documentClass = nullptr,
                        const vfBase::ClassInfo* viewClass = nullptr)
{
    return new DocTemplate(&manager, "Kind", "obj", "", "obj", document, view, documentClass, viewClass, 1, 0,
                           Options());
}

std::string messageOf(const std::function<void()>& call)
{
    try {
        call();
    } catch (const vfBase::BaseException& exception) {
        return exception.what();
    }
    return "nothing was thrown";
}

/// A document that raises where its first view is made.
struct Raising : RecordingDocument
{
    static const vfBase::ClassInfo s_classInfo;
    bool onCreate(const VfString& path, const Options&) override
    {
        vfTest::record(name() + " onCreate " + path.str());
        throw std::runtime_error("no view");
    }
};
const vfBase::ClassInfo Raising::s_classInfo("vfTest", "Raising", "vfTest::Raising", &Document::s_classInfo,
                                             nullptr, 8, []() -> vfBase::VfObject* { return new Raising; });

/// A view that raises when it is given its options.
struct RaisingView : RecordingView
{
    static const vfBase::ClassInfo s_classInfo;
    const vfBase::ClassInfo* getClassInfo() const override { return &s_classInfo; }
    void setViewOptions(const Options&) override { throw std::runtime_error("options"); }
};
const vfBase::ClassInfo RaisingView::s_classInfo("vfTest", "RaisingView", "vfTest::RaisingView",
                                                 &View::s_classInfo, nullptr, 8,
                                                 []() -> vfBase::VfObject* { return new RaisingView; });

} // namespace

TEST(DocTemplate, KeepsWhatItWasMadeWith)
{
    DocManager manager;
    Options options;
    DocTemplate kind(&manager, "Boats", "obj,stl", "/models", "obj", "D", "V",
                     &RecordingDocument::s_classInfo, &RecordingView::s_classInfo, 3 | 64, 17, options);
    options.setPluginStringData("key", "shared");
    EXPECT_EQ("Boats", kind.getDescription());
    EXPECT_EQ("obj,stl", kind.getFileFilter());
    EXPECT_EQ("/models", kind.getDirectory());
    EXPECT_EQ("obj", kind.getDefaultExtension());
    EXPECT_EQ("D", kind.getDocumentName());
    EXPECT_EQ("V", kind.getViewName());
    EXPECT_EQ(&RecordingDocument::s_classInfo, kind.getDocClassInfo());
    EXPECT_EQ(&RecordingView::s_classInfo, kind.getViewClassInfo());
    EXPECT_EQ(67, kind.getFlags());
    EXPECT_EQ(17, kind.getExtraFlags());
    EXPECT_TRUE(kind.isVisible());
    EXPECT_TRUE(kind.isNative());
    EXPECT_EQ(&manager, kind.getDocumentManager());
    EXPECT_EQ("", kind.getSupportedImageExtensions());
    EXPECT_EQ("shared", kind.getCreateDocumentOptions().getPluginStringData("key"));
    EXPECT_TRUE(manager.containsTemplate(&kind));

    kind.setDescription("a");
    kind.setFileFilter("b");
    kind.setDirectory("c");
    kind.setDefaultExtension("d");
    kind.setSupportedImageExtensions("e");
    EXPECT_EQ("a", kind.getDescription());
    EXPECT_EQ("b", kind.getFileFilter());
    EXPECT_EQ("c", kind.getDirectory());
    EXPECT_EQ("d", kind.getDefaultExtension());
    EXPECT_EQ("e", kind.getSupportedImageExtensions());
    EXPECT_EQ(&vfBase::VfObject::s_classInfo, kind.getClassInfo());
}

TEST(DocTemplate, WithoutAManagerItStaysUnregisteredAndNeedsOneBeforeItsEnd)
{
    DocManager manager;
    {
        DocTemplate kind(nullptr, "Kind", "obj", "", "obj", "D", "V", nullptr, nullptr, 0, 0, Options());
        EXPECT_EQ(nullptr, kind.getDocumentManager());
        EXPECT_FALSE(kind.isVisible());
        EXPECT_FALSE(kind.isNative());
        kind.setDocumentManager(&manager);
        EXPECT_FALSE(manager.containsTemplate(&kind));
    }
    EXPECT_EQ(0u, manager.getTemplates().size());
}

TEST(DocTemplate, LeavesTheManagerAtItsEndAndACopyIsNotRegistered)
{
    DocManager manager;
    DocTemplate* kind = makeTemplate(manager);
    {
        DocTemplate copy(*kind);
        EXPECT_EQ("Recorded", copy.getDescription());
        EXPECT_EQ(1u, manager.getTemplates().size());
        DocTemplate other(&manager, "", "", "", "", "", "", nullptr, nullptr, 0, 0, Options());
        other = *kind;
        EXPECT_EQ("Recorded", other.getDescription());
    }
    EXPECT_EQ(1u, manager.getTemplates().size());
    delete kind;
    EXPECT_EQ(0u, manager.getTemplates().size());
}

TEST(FileMatchesTemplate, AStarAloneMatchesEveryPath)
{
    EXPECT_TRUE(matches("*", "obj", "a.xyz"));
    EXPECT_TRUE(matches("*", "obj", "noextension"));
    EXPECT_TRUE(matches("stl,*", "obj", "a.xyz"));
    EXPECT_FALSE(matches("*.xyz", "obj", "a.xyz"));
    EXPECT_FALSE(matches("x*", "obj", "a.xyz"));
}

TEST(FileMatchesTemplate, ItemsMatchWhicheverSideHasTheCapitals)
{
    EXPECT_TRUE(matches("STL,Obj", "", "a.stl"));
    EXPECT_TRUE(matches("stl", "", "a.STL"));
    EXPECT_TRUE(matches("StL", "", "a.sTl"));
    EXPECT_FALSE(matches("stl", "", "a.st"));
    EXPECT_FALSE(matches("stl", "", "a.stlx"));
}

TEST(FileMatchesTemplate, AnEmptyFilterMatchesByTheDefaultExtensionInLowerCaseOnly)
{
    EXPECT_TRUE(matches("", "obj", "a.obj"));
    EXPECT_TRUE(matches("", "obj", "a.OBJ"));
    EXPECT_FALSE(matches("", "OBJ", "a.obj"));
    EXPECT_FALSE(matches("", "OBJ", "a.OBJ"));
}

TEST(FileMatchesTemplate, TheDefaultExtensionCountsBesideAFilter)
{
    EXPECT_TRUE(matches("stl", "obj", "a.obj"));
    EXPECT_FALSE(matches("stl", "obj", "a.ply"));
}

TEST(FileMatchesTemplate, APathWithoutAnExtensionMatchesAnEmptyDefaultExtension)
{
    EXPECT_TRUE(matches("stl", "", "noextension"));
    EXPECT_FALSE(matches("stl", "obj", "noextension"));
}

TEST(FileMatchesTemplate, DotsAndBlanksInTheFilterMatchNothing)
{
    EXPECT_FALSE(matches(".stl", "", "a.stl"));
    EXPECT_FALSE(matches("obj, stl", "x", "a.stl"));
    EXPECT_TRUE(matches("obj, stl", "x", "a.obj"));
}

TEST(DocTemplate, CreatesAndEntersADocumentWithItsFirstView)
{
    RecordingApplication bench;
    DocTemplate* kind = makeTemplate(bench.manager);
    Document* document = kind->createDocument("a.obj", Options());
    ASSERT_NE(nullptr, document);
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 made", "doc1 onCreate a.obj", "view1 made",
                                               "doc1 onChangedViewList", "view1 onCreate"));
    EXPECT_EQ("a.obj", document->getFilename());
    EXPECT_EQ(kind, document->getDocumentTemplate());
    EXPECT_TRUE(bench.manager.containsDocument(document));
}

TEST(DocTemplate, ResolvesItsTypeNamesOnceAndKeepsTheRecords)
{
    RecordingApplication bench;
    DocTemplate* kind = makeTemplate(bench.manager);
    EXPECT_EQ(nullptr, kind->getDocClassInfo());
    EXPECT_EQ(nullptr, kind->getViewClassInfo());
    kind->createDocument("a.obj", Options());
    EXPECT_EQ(&RecordingDocument::s_classInfo, kind->getDocClassInfo());
    EXPECT_EQ(&RecordingView::s_classInfo, kind->getViewClassInfo());
}

TEST(DocTemplate, WithARecordTheRegistryIsNotConsulted)
{
    RecordingApplication bench;
    DocTemplate* kind = templateOf(bench.manager, "no such class", "nor this",
                                   &RecordingDocument::s_classInfo, &RecordingView::s_classInfo);
    EXPECT_NE(nullptr, kind->createDocument("a.obj", Options()));
    EXPECT_EQ("no such class", kind->getDocumentName());
}

TEST(DocTemplate, ATypeNameThatIsNoDocumentRaises)
{
    RecordingApplication bench;
    for (const char* name : {"no such class", "vfTest::View", "vfApplication::CommandProcessor"}) {
        DocTemplate* kind = templateOf(bench.manager, name, "vfTest::View");
        EXPECT_EQ("Doc type name does not represent vfApplication::Document!",
                  messageOf([kind] { kind->createDocument("a.obj", Options()); }));
        EXPECT_EQ(nullptr, kind->getDocClassInfo());
    }
    EXPECT_THAT(recorder().take(), ElementsAre("view1 made", "~view1"));
}

TEST(DocTemplate, ATypeNameThatIsNoViewRaisesOutOfCreateView)
{
    RecordingApplication bench;
    DocTemplate* kind = templateOf(bench.manager, "vfTest::Document", "vfTest::Document");
    EXPECT_EQ("View type name does not represent vfApplication::View!",
              messageOf([kind] { kind->createView(nullptr, Options()); }));
    EXPECT_EQ(nullptr, kind->getViewClassInfo());
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 made", "~doc1"));
}

TEST(DocTemplate, ADocumentWhoseFirstViewRaisesIsDeletedAndGivesNull)
{
    RecordingApplication bench;
    DocTemplate* kind = templateOf(bench.manager, "", "", &Raising::s_classInfo, &RecordingView::s_classInfo);
    EXPECT_EQ(nullptr, kind->createDocument("a.obj", Options()));
    EXPECT_THAT(recorder().take(), ElementsAre("doc1 made", "doc1 onCreate a.obj", "~doc1"));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(DocTemplate, ARecordOfAnotherClassGivesNoDocumentWithoutAMessage)
{
    RecordingApplication bench;
    DocTemplate* kind =
        templateOf(bench.manager, "", "", &RecordingView::s_classInfo, &RecordingView::s_classInfo);
    recorder().take();
    EXPECT_EQ(nullptr, kind->createDocument("a.obj", Options()));
    EXPECT_THAT(recorder().take(), ElementsAre("view1 made", "~view1"));
    EXPECT_EQ(0, bench.manager.getNumDocuments());
}

TEST(DocTemplate, ARecordOfAnotherClassGivesNoViewWithoutAMessage)
{
    RecordingApplication bench;
    DocTemplate* kind =
        templateOf(bench.manager, "", "", &RecordingDocument::s_classInfo, &RecordingDocument::s_classInfo);
    recorder().take();
    EXPECT_EQ(nullptr, kind->createView(nullptr, Options()));
}

TEST(DocTemplate, AViewGetsItsOptionsAndItsDocumentBeforeItIsAsked)
{
    RecordingApplication bench;
    DocTemplate* kind = makeTemplate(bench.manager);
    Document* document = kind->createDocument("a.obj", Options());
    Options options;
    options.setPluginStringData("key", "value");
    View* view = kind->createView(document, options);
    EXPECT_EQ("value", view->getViewOptions().getPluginStringData("key"));
    EXPECT_EQ(document, view->getDocument());
    EXPECT_EQ(2u, document->getViewList().size());
}

TEST(DocTemplate, AViewThatRefusesIsDeletedAndLeavesTheDocumentsList)
{
    RecordingApplication bench;
    DocTemplate* kind = makeTemplate(bench.manager);
    Document* document = kind->createDocument("a.obj", Options());
    RecordingView::createResult = false;
    recorder().take();
    EXPECT_EQ(nullptr, kind->createView(document, Options()));
    EXPECT_EQ(1u, document->getViewList().size());
    EXPECT_EQ(1, recorder().count("~view2"));
}

TEST(DocTemplate, AViewThatRaisesOnItsOptionsIsDeletedButItsRecordIsKept)
{
    RecordingApplication bench;
    DocTemplate* kind = templateOf(bench.manager, "vfTest::Document", "vfTest::RaisingView");
    EXPECT_THROW(kind->createView(nullptr, Options()), std::runtime_error);
    EXPECT_EQ(1, recorder().count("~view1"));
    EXPECT_EQ(&RaisingView::s_classInfo, kind->getViewClassInfo());
}

TEST(DocTemplate, OperationsKeepTheirSlots)
{
    struct Open : DocTemplate
    {
        using DocTemplate::doCreateDocument;
        using DocTemplate::doCreateView;
    };
    EXPECT_EQ(0, slotOf(&DocTemplate::getClassInfo));
    EXPECT_EQ(3, slotOf(&DocTemplate::getUniqueId));
    EXPECT_EQ(4, slotOf(&DocTemplate::createDocument));
    EXPECT_EQ(5, slotOf(&DocTemplate::createView));
    EXPECT_EQ(6, slotOf(&DocTemplate::fileMatchesTemplate));
    EXPECT_EQ(7, slotOf(&DocTemplate::getDocumentName));
    EXPECT_EQ(8, slotOf(&DocTemplate::getViewName));
    EXPECT_EQ(9, slotOf(&DocTemplate::initDocument));
    EXPECT_EQ(10, slotOf(&Open::doCreateDocument));
    EXPECT_EQ(11, slotOf(&Open::doCreateView));
}
