// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"
#include "model/ViewerDocuments.h"
#include "support/Models.h"
#include "support/RecordingShell.h"
#include "support/Search.h"
#include "support/TemporaryDirectory.h"
#include <velaforge/scene/ModelStatistics.h>

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/Version.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/View.h>
#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/ReadGuard.h>
#include <velaforge/formats/WriteJob.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/Notify>

#include <gmock/gmock.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using testing::HasSubstr;
using vfApplication::Application;
using vfBase::Options;
using vfTest::signpost;
using vfTest::TemporaryDirectory;
using vfViewer::ModelDocument;

namespace {

struct TestView : vfApplication::View
{
    static int s_updates;
    bool onCreate(vfApplication::Document*, const Options&) override { return true; }
    void onUpdate(View*) override { ++s_updates; }
};
int TestView::s_updates = 0;

const vfBase::ClassInfo testView("test", "TestView", "test::TestView", &vfApplication::View::s_classInfo,
                                 nullptr, 8, []() -> vfBase::VfObject* { return new TestView; });

struct ViewerSetup : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        Application::instance(false)->setDocManager(new vfViewer::ViewerDocManager(testView));
    }
};

/// The viewer without a screen, and without pictures.
class ModelDocuments : public testing::Test
{
protected:
    ModelDocuments() : line({"viewer"}), application(line.argc(), line.argv(), ViewerSetup())
    {
        vfBase::NotifyHandler::instance().install();
        osg::setNotifyLevel(osg::FATAL);
        vfFormats::installReadGuard();
    }

    ModelDocument* open(const std::string& path)
    {
        testing::internal::CaptureStderr();
        auto* document = dynamic_cast<ModelDocument*>(application.openDocument(path.c_str(), Options()));
        said = testing::internal::GetCapturedStderr();
        return document;
    }

    vfViewer::ViewerDocManager& manager() const
    {
        return dynamic_cast<vfViewer::ViewerDocManager&>(application.getDocManager());
    }

    vfTest::RecordingProducer producer;
    vfTest::CommandLine line;
    Application application;
    TemporaryDirectory directory;
    std::string said; ///< on standard error, by the last open
};

osg::BoundingBox boundsOf(osg::Node& node)
{
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    return visitor.getBoundingBox();
}

osg::Node& firstNode(const ModelDocument& document)
{
    return *document.scene().getChild(0);
}

} // namespace

TEST_F(ModelDocuments, OpenEveryFormat)
{
    for (const std::string& format : vfTest::signpostFormats()) {
        const ModelDocument* document = open(signpost(format));
        ASSERT_TRUE(document) << format << said;
        EXPECT_EQ(1u, document->scene().getNumChildren());
        EXPECT_FALSE(document->isModified());
    }
    EXPECT_EQ(0u, manager().failures().size());
}

TEST_F(ModelDocuments, AModelWithoutMaterialsIsSavedInEveryFormat)
{
    const ModelDocument* document = open(VELAFORGE_SOURCE_DIR "/models/lighthouse.ply");
    ASSERT_TRUE(document);
    std::istringstream formats(vfFormats::writableFormats());
    for (std::string format; std::getline(formats, format, ',');) {
        const std::string path = directory.file("lighthouse." + format);
        EXPECT_EQ("", vfFormats::writeModel(document->scene(), path).reason) << format;
        const ModelDocument* again = open(path);
        ASSERT_TRUE(again) << format << said;
        const unsigned long long triangles = vfScene::countModel(again->scene()).triangles;
        // Some leave out what has no size, at the tips; others know squares only, which are two triangles.
        EXPECT_LE(1780u, triangles) << format;
        EXPECT_GE(2 * 1848u, triangles) << format;
    }
}

TEST_F(ModelDocuments, AFileThatCannotBeOpenedGetsOneLineAndTheNextIsOpened)
{
    const std::string missing = directory.file("a b\n\xFF.obj");
    EXPECT_FALSE(open(missing));
    EXPECT_THAT(said, HasSubstr("/a b\\n\\xFF.obj: No such file or directory\n"));
    EXPECT_EQ(1, std::count(said.begin(), said.end(), '\n'));
    EXPECT_FALSE(open(directory.write("a.xyz", "x")));
    EXPECT_THAT(said, HasSubstr("a.xyz: not a format that can be read"));
    EXPECT_FALSE(open(directory.write("a.obj", "nonsense")));
    EXPECT_EQ(1, std::count(said.begin(), said.end(), '\n'));
    EXPECT_FALSE(open(""));
    EXPECT_EQ(4u, manager().failures().size());
    EXPECT_TRUE(open(signpost("obj")));
    EXPECT_EQ(1u, application.getNumDocuments());
}

TEST_F(ModelDocuments, WarnOfMissingTexturesButNotWithoutEnd)
{
    std::string materials;
    std::string model = "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\n";
    for (int i = 0; i < 20; ++i) {
        materials += "newmtl m" + std::to_string(i) + "\nmap_Kd t" + std::to_string(i) + ".png\n";
        model += "usemtl m" + std::to_string(i) + "\nf 1/1 2/1 3/1\n";
    }
    directory.write("a.mtl", materials);
    EXPECT_TRUE(open(directory.write("a.obj", model)));
    EXPECT_THAT(said, HasSubstr("warning: "));
    EXPECT_THAT(said, HasSubstr("and more of the kind"));
    EXPECT_LE(std::count(said.begin(), said.end(), '\n'), 7);
    EXPECT_EQ(0u, manager().failures().size());
}

TEST_F(ModelDocuments, AnImageOpensAsADocumentToo)
{
    const ModelDocument* document = open(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/quarters.png");
    ASSERT_TRUE(document);
    EXPECT_TRUE(dynamic_cast<const vfViewer::ImageDocument*>(document));
}

TEST_F(ModelDocuments, HideAndShowCanBeUndone)
{
    ModelDocument* document = open(signpost("obj"));
    osg::Node& node = firstNode(*document);
    TestView::s_updates = 0;
    EXPECT_TRUE(document->hide(node));
    EXPECT_EQ(0u, node.getNodeMask());
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(1, TestView::s_updates);
    EXPECT_TRUE(document->show(node));
    EXPECT_NE(0u, node.getNodeMask());
    EXPECT_EQ("Show", document->getCommandProcessor()->getCurrentCommand()->getName());
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_EQ(0u, node.getNodeMask());
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_EQ(~0u, node.getNodeMask());
    EXPECT_TRUE(document->getCommandProcessor()->redo());
    EXPECT_EQ(0u, node.getNodeMask());
}

TEST_F(ModelDocuments, RemovingANodeCanBeUndoneInEveryPlaceWhereItHangs)
{
    ModelDocument* document = open(signpost("obj"));
    const osg::ref_ptr<osg::Group> first = new osg::Group;
    const osg::ref_ptr<osg::Group> outside = new osg::Group;
    const osg::ref_ptr<osg::Node> shared = new osg::Geode;
    first->addChild(new osg::Group);
    first->addChild(shared);
    first->addChild(new osg::Group);
    document->scene().addChild(first);
    document->scene().addChild(shared);
    outside->addChild(shared);
    EXPECT_TRUE(document->remove(*shared));
    EXPECT_FALSE(first->containsNode(shared));
    EXPECT_FALSE(document->scene().containsNode(shared));
    EXPECT_TRUE(outside->containsNode(shared));
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_EQ(1u, first->getChildIndex(shared));
    EXPECT_EQ(2u, document->scene().getChildIndex(shared));
    EXPECT_TRUE(document->getCommandProcessor()->redo());
    EXPECT_FALSE(first->containsNode(shared));
}

TEST_F(ModelDocuments, MovingANodeCanBeUndone)
{
    ModelDocument* document = open(signpost("stl"));
    osg::Node& node = firstNode(*document);
    const osg::BoundingBox before = boundsOf(document->scene());
    EXPECT_TRUE(document->move(node, {10, 0, -2}));
    EXPECT_TRUE(document->move(node, {1, 0, 0}));
    EXPECT_NEAR(before.xMin() + 11, boundsOf(document->scene()).xMin(), 1e-4);
    EXPECT_NEAR(before.zMin() - 2, boundsOf(document->scene()).zMin(), 1e-4);
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_NEAR(before.xMin(), boundsOf(document->scene()).xMin(), 1e-4);
    EXPECT_EQ(&document->scene(), node.getParent(0));
    EXPECT_TRUE(document->getCommandProcessor()->redo());
    EXPECT_NEAR(before.xMin() + 10, boundsOf(document->scene()).xMin(), 1e-4);
}

TEST_F(ModelDocuments, MovingANodeLeavesAGroupOutsideOfTheSceneThatSharesIt)
{
    ModelDocument* document = open(signpost("stl"));
    osg::Node& node = firstNode(*document);
    const osg::ref_ptr<osg::Group> outside = new osg::Group;
    outside->addChild(&node);
    EXPECT_TRUE(document->move(node, {10, 0, 0}));
    EXPECT_TRUE(outside->containsNode(&node));
    EXPECT_FALSE(document->scene().containsNode(&node));
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_TRUE(outside->containsNode(&node));
    EXPECT_TRUE(document->scene().containsNode(&node));
}

TEST_F(ModelDocuments, SettingAColourCanBeUndone)
{
    ModelDocument* document = open(signpost("obj"));
    osg::Node& node = firstNode(*document);
    const osg::ref_ptr<osg::StateSet> before = node.getStateSet();
    EXPECT_TRUE(document->setColor(node, {1, 0, 0, 0.5f}));
    const auto* material =
        dynamic_cast<osg::Material*>(node.getStateSet()->getAttribute(osg::StateAttribute::MATERIAL));
    ASSERT_TRUE(material);
    EXPECT_EQ(osg::Vec4(1, 0, 0, 0.5f), material->getDiffuse(osg::Material::FRONT));
    EXPECT_TRUE(document->getCommandProcessor()->undo());
    EXPECT_EQ(before, node.getStateSet());
    EXPECT_TRUE(document->getCommandProcessor()->redo());
    EXPECT_NE(before, node.getStateSet());
}

TEST_F(ModelDocuments, ANodeOutsideOfTheSceneIsNotChanged)
{
    ModelDocument* document = open(signpost("obj"));
    const osg::ref_ptr<osg::Node> stranger = new osg::Group;
    EXPECT_FALSE(document->hide(*stranger));
    EXPECT_FALSE(document->remove(*stranger));
    EXPECT_FALSE(document->move(*stranger, {1, 0, 0}));
    EXPECT_FALSE(document->setColor(document->scene(), {1, 0, 0, 1}));
    EXPECT_EQ(~0u, stranger->getNodeMask());
    EXPECT_FALSE(document->isModified());
    EXPECT_FALSE(document->getCommandProcessor()->canUndo());
}

TEST_F(ModelDocuments, ACommandMayOutliveItsDocument)
{
    ModelDocument* document = open(signpost("obj"));
    const osg::ref_ptr<osg::Node> node = &firstNode(*document);
    document->hide(*node);
    vfApplication::Command command = document->getCommandProcessor()->getCurrentCommand();
    EXPECT_TRUE(application.closeDocument(document));
    EXPECT_TRUE(command.undo());
    EXPECT_EQ(~0u, node->getNodeMask());
}

TEST_F(ModelDocuments, AreSavedInTheFormatOfTheExtensionAndReadAgain)
{
    for (const char* extension : {"obj", "stl", "3ds", "ac", "dxf", "osgt", "osgb", "ive"}) {
        ModelDocument* document = open(signpost("obj"));
        ASSERT_TRUE(document) << extension;
        const osg::BoundingBox before = boundsOf(document->scene());
        const std::string path = directory.file(std::string("saved.") + extension);
        document->modify(true);
        ASSERT_TRUE(document->onSaveDocument(path, Options()).success()) << extension;
        EXPECT_FALSE(document->isModified());
        EXPECT_EQ(path, document->getFilename().str());
        EXPECT_TRUE(application.closeDocument(document));
        document = open(path);
        ASSERT_TRUE(document) << extension << said;
        const osg::BoundingBox after = boundsOf(document->scene());
        EXPECT_LT((before.center() - after.center()).length(), 1e-2f) << extension;
        EXPECT_NEAR(before.radius(), after.radius(), 1e-2f) << extension;
        EXPECT_TRUE(application.closeDocument(document));
    }
}

TEST_F(ModelDocuments, AFailedSaveLeavesTheFileAndTellsWhy)
{
    ModelDocument* document = open(signpost("obj"));
    document->modify(true);
    const std::string path = directory.write("kept.osgt", "before");
    rlimit limit{1000, RLIM_INFINITY};
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    testing::internal::CaptureStderr();
    const vfBase::WriteResult result = document->onSaveDocument(path, Options());
    const std::string lines = testing::internal::GetCapturedStderr();
    limit.rlim_cur = before.rlim_cur;
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_TRUE(result.error());
    EXPECT_THAT(lines, HasSubstr("kept.osgt: "));
    EXPECT_EQ("before", vfTest::readFile(path));
    EXPECT_TRUE(document->isModified());
    EXPECT_TRUE(document->onSaveDocument(path, Options()).success());
}

TEST_F(ModelDocuments, AFormatThatCannotBeWrittenIsTold)
{
    ModelDocument* document = open(signpost("obj"));
    for (const char* name : {"a.xyz", "a.lwo", "missing/a.obj"}) {
        testing::internal::CaptureStderr();
        EXPECT_TRUE(document->onSaveDocument(directory.file(name), Options()).error()) << name;
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(name));
        EXPECT_EQ("", vfTest::readFile(directory.file(name)));
    }
}

TEST_F(ModelDocuments, RevertBringsBackTheModelOfTheFile)
{
    ModelDocument* document = open(signpost("obj"));
    document->remove(firstNode(*document));
    EXPECT_EQ(0u, document->scene().getNumChildren());
    EXPECT_TRUE(document->revert());
    EXPECT_EQ(1u, document->scene().getNumChildren());
    EXPECT_FALSE(document->isModified());
}

TEST_F(ModelDocuments, ClosingDiscardsChangesAndNeverOverwritesTheFile)
{
    const std::string path = directory.write("a.obj", vfTest::readFile(signpost("obj")));
    const std::string before = vfTest::readFile(path);
    ModelDocument* document = open(path);
    document->remove(firstNode(*document));
    EXPECT_TRUE(application.closeDocument(document));
    document = open(path);
    document->remove(firstNode(*document));
    application.setDocManager(new vfApplication::DocManager); // ends the former manager with its documents
    EXPECT_EQ(before, vfTest::readFile(path));
}

TEST_F(ModelDocuments, OpenedAndClosedOneAfterAnotherLeaveNothingBehind)
{
    vfTest::Search search("models opened and closed", 100);
    while (search.next()) {
        ModelDocument* document = open(signpost(search.seed() % 2 ? "stl" : "osgb"));
        ASSERT_TRUE(document);
        const osg::ref_ptr<osg::Node> model = &firstNode(*document);
        ASSERT_TRUE(document->hide(*model));
        ASSERT_TRUE(application.closeDocument(document));
        ASSERT_EQ(1, model->referenceCount()) << "a reference to the model is left";
    }
    EXPECT_EQ(0u, application.getNumDocuments());
}
