// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"
#include "model/ModelView.h"
#include "model/ViewerDocuments.h"
#include "support/ModelDigest.h"
#include "support/Models.h"
#include "support/RecordingShell.h"
#include "support/TemporaryDirectory.h"
#include <velaforge/scene/CameraBookmarks.h>
#include <velaforge/scene/ModelScene.h>
#include <velaforge/scene/ModelStatistics.h>

#include <velaforge/application/Application.h>
#include <velaforge/application/ApplicationSetup.h>
#include <velaforge/base/ClassInfo.h>
#include <velaforge/base/NotifyHandler.h>
#include <velaforge/base/StringList.h>
#include <velaforge/commands/Command.h>
#include <velaforge/commands/CommandPrivate.h>
#include <velaforge/commands/CommandProcessor.h>
#include <velaforge/documents/View.h>
#include <velaforge/formats/ReadGuard.h>
#include <velaforge/toolkit/CommandNames.h>

#include <osg/AnimationPath>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/MatrixTransform>
#include <osg/Notify>
#include <osg/Transform>
#include <osg/TriangleFunctor>
#include <osg/observer_ptr>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace fs = std::filesystem;
using testing::HasSubstr;
using vfApplication::Application;
using vfApplication::Command;
using vfBase::VfVariant;
using vfTest::signpost;
using vfViewer::ModelDocument;

namespace {

struct TurningView : vfApplication::View, vfViewer::ModelView
{
    static int s_view;
    static int s_updates;
    bool onCreate(vfApplication::Document*, const vfBase::Options&) override { return true; }
    void lookFrom(vfScene::StandardView view) override { s_view = static_cast<int>(view); }
    void fit(osg::Node* part) override { s_view = part ? -3 : -2; }
    vfScene::LookAt getCamera() const override { return s_camera; }
    void setCamera(const vfScene::LookAt& camera) override { s_camera = camera; }
    vfScene::ViewStyle getStyle() const override { return s_style; }
    void setStyle(const vfScene::ViewStyle& style) override { s_style = style; }
    osg::ref_ptr<osg::Image> takePicture(const vfApplication::SnapshotFormat& format,
                                         vfBase::VfString&) override
    {
        s_format = format;
        const osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(1, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE);
        std::fill_n(image->data(), 4, static_cast<unsigned char>(100));
        return image;
    }
    bool setTool(vfViewer::Tool tool) override
    {
        s_tool = tool;
        return s_hasHand;
    }
    vfViewer::Tool getTool() const override { return s_tool; }
    void follow() override {}
    void onUpdate(vfApplication::View*) override { ++s_updates; }
    static vfViewer::Tool s_tool;
    static bool s_hasHand;
    static vfScene::LookAt s_camera;
    static vfScene::ViewStyle s_style;
    static vfApplication::SnapshotFormat s_format;
};
int TurningView::s_view = -1;
int TurningView::s_updates = 0;
vfViewer::Tool TurningView::s_tool = vfViewer::Tool::Select;
bool TurningView::s_hasHand = false;
vfScene::LookAt TurningView::s_camera;
vfScene::ViewStyle TurningView::s_style;
vfApplication::SnapshotFormat TurningView::s_format;

const vfBase::ClassInfo turningView("test", "TurningView", "test::TurningView",
                                    &vfApplication::View::s_classInfo, nullptr, 8,
                                    []() -> vfBase::VfObject* { return new TurningView; });

struct Setup : vfApplication::ApplicationSetup
{
    void onRegisterDocumentType() const override
    {
        Application::instance(false)->setDocManager(new vfViewer::ViewerDocManager(turningView));
    }
};

/// The viewer's documents with one model open.
struct Workshop
{
    explicit Workshop(const std::string& path = signpost("obj")) : line({"program"})
    {
        vfBase::NotifyHandler::instance().install();
        osg::setNotifyLevel(osg::WARN);
        vfFormats::installReadGuard();
        application = std::make_unique<Application>(line.argc(), line.argv(), Setup());
        document = dynamic_cast<ModelDocument*>(application->openDocument(path.c_str(), vfBase::Options()));
    }

    /// @return what was said on standard error
    static std::string invoke(const char* name, const VfVariant& argument = VfVariant())
    {
        testing::internal::CaptureStderr();
        Command command = Command::getCommandByName(name);
        EXPECT_TRUE(command.isValid()) << name;
        command.invoke(argument);
        return testing::internal::GetCapturedStderr();
    }

    std::string digest() const { return vfTest::digestOf(document->getModelScene()); }

    vfApplication::CommandProcessor& history() const { return *document->getCommandProcessor(); }

    vfTest::RecordingProducer producer;
    vfTest::CommandLine line;
    std::unique_ptr<Application> application;
    ModelDocument* document;
};

} // namespace

TEST(NamedCommands, EachOneThatCanBeUndoneLeavesTheModelAsItWas)
{
    const Workshop shop;
    ASSERT_NE(nullptr, shop.document);
    shop.invoke("vfViewer::SelectNext");
    shop.document->hide(*shop.document->target()); // so that there is something to show
    const std::string before = shop.digest();
    int tried = 0;
    for (const vfBase::VfString& name : vfApplication::commandNames()) {
        Command command = Command::getCommandByName(name.str());
        if (name.str().rfind("vfViewer::", 0) != 0 || !command.canUndo())
            continue;
        if (name == "vfViewer::MergeOpen")
            continue; // with one model there is nothing to merge
        const std::map<std::string, std::string> arguments = {
            {"vfViewer::SetColor", "1,0,0"}, {"vfViewer::Rotate", "0,0,1,45"},
            {"vfViewer::Scale", "2"},        {"vfViewer::Rename", "otherwise"},
            {"vfViewer::Move", "1,2,3"},     {"vfViewer::AddFile", signpost("stl")}};
        const auto found = arguments.find(name.str());
        const VfVariant argument = found == arguments.end() ? VfVariant() : VfVariant(found->second);
        command.invoke(argument);
        EXPECT_TRUE(shop.history().getCurrentCommand() == command) << name.str();
        EXPECT_NE("", std::string(command.getName())) << name.str();
        if (name != "vfViewer::Hide") { // hidden it is already
            EXPECT_NE(before, shop.digest()) << name.str();
        }
        const std::string after = shop.digest();
        EXPECT_TRUE(shop.history().undo()) << name.str();
        EXPECT_EQ(before, shop.digest()) << name.str();
        EXPECT_TRUE(shop.history().redo()) << name.str();
        EXPECT_EQ(after, shop.digest()) << name.str();
        EXPECT_TRUE(shop.history().undo()) << name.str();
        ++tried;
    }
    EXPECT_EQ(13, tried);
}

TEST(NamedCommands, AnotherSelectionHasTheViewsDrawnAnewOnce)
{
    Workshop shop;
    const int before = TurningView::s_updates;
    shop.invoke("vfViewer::SelectNext");
    EXPECT_EQ(before + 1, TurningView::s_updates);
    shop.document->setSelection(shop.document->getSelection());
    EXPECT_EQ(before + 1, TurningView::s_updates);
    shop.invoke("vfViewer::SelectNothing");
    EXPECT_EQ(before + 2, TurningView::s_updates);
}

TEST(NamedCommands, WithoutASelectionTheyWorkOnTheWholeModel)
{
    const Workshop shop;
    EXPECT_EQ(shop.document->scene().getChild(0), shop.document->target());
    EXPECT_EQ("", shop.invoke("vfViewer::Hide"));
    EXPECT_EQ(0u, shop.document->scene().getChild(0)->getNodeMask());
    EXPECT_EQ("", shop.invoke("vfViewer::ShowAll"));
    EXPECT_NE(0u, shop.document->scene().getChild(0)->getNodeMask());
    EXPECT_EQ("", shop.invoke("vfViewer::Remove"));
    EXPECT_EQ(0u, shop.document->scene().getNumChildren());
    EXPECT_THAT(shop.invoke("vfViewer::Hide"), HasSubstr("the model is empty"));
    EXPECT_THAT(shop.invoke("vfViewer::SelectNext"), HasSubstr("there is nothing to select"));
    EXPECT_EQ("", shop.invoke("vfViewer::Undo"));
    EXPECT_EQ(1u, shop.document->scene().getNumChildren());
}

TEST(NamedCommands, TheSelectionGoesRoundThePartsInBothDirections)
{
    const Workshop shop;
    const auto parts = shop.document->getModelScene().parts();
    ASSERT_LT(2u, parts.size());
    EXPECT_EQ(nullptr, shop.document->getSelection());
    shop.invoke("vfViewer::SelectPrevious");
    EXPECT_EQ(parts.back(), shop.document->getSelection());
    for (const auto& part : parts) {
        shop.invoke("vfViewer::SelectNext");
        EXPECT_EQ(part, shop.document->getSelection());
        EXPECT_EQ(part, shop.document->target());
    }
    shop.invoke("vfViewer::SelectPrevious");
    EXPECT_EQ(parts[parts.size() - 2], shop.document->getSelection());
    shop.invoke("vfViewer::SelectNothing");
    EXPECT_EQ(nullptr, shop.document->getSelection());
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_FALSE(shop.history().canUndo()); // and it stays out of the history
}

TEST(NamedCommands, APartThatWasRemovedIsNoLongerSelected)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    osg::Node* part = shop.document->getSelection();
    shop.invoke("vfViewer::Remove");
    EXPECT_EQ(nullptr, shop.document->getSelection());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(part, shop.document->getSelection());
}

TEST(NamedCommands, DoneAgainTheyChangeWhatTheyChangedBeforeWhateverIsSelectedByThen)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    const osg::Node* first = shop.document->getSelection();
    shop.invoke("vfViewer::Hide");
    shop.invoke("vfViewer::Undo");
    shop.invoke("vfViewer::SelectNext");
    const osg::Node* second = shop.document->getSelection();
    ASSERT_NE(first, second);
    shop.invoke("vfViewer::Redo");
    EXPECT_EQ(0u, first->getNodeMask());
    EXPECT_NE(0u, second->getNodeMask());
}

TEST(NamedCommands, UndoAndRedoSayWhenThereIsNothing)
{
    const Workshop shop;
    EXPECT_THAT(shop.invoke("vfViewer::Undo"), HasSubstr("there is nothing to undo"));
    EXPECT_THAT(shop.invoke("vfViewer::Redo"), HasSubstr("there is nothing to redo"));
    EXPECT_THAT(shop.invoke("vfViewer::ShowAll"), HasSubstr("nothing is hidden"));
    shop.invoke("vfViewer::Hide");
    EXPECT_EQ("", shop.invoke("vfViewer::Undo"));
    EXPECT_EQ("", shop.invoke("vfViewer::Redo"));
    EXPECT_EQ(0u, shop.document->target()->getNodeMask());
}

TEST(NamedCommands, ArgumentsThatMakeNoSenseAreToldAndChangeNothing)
{
    const Workshop shop;
    const std::string before = shop.digest();
    for (const char* offset :
         {"", "1", "1,2", "1,2,3,4", "1,2,x", "1 2 3", "nan,0,0", "inf,0,0", "1e999,0,0", ",,", "1,2,3,"})
        EXPECT_THAT(shop.invoke("vfViewer::Move", offset), HasSubstr("vfViewer::Move=<x>,<y>,<z>")) << offset;
    for (const char* color : {"", "red", "1,0", "2,0,0", "-1,0,0", "1,1,1,1,1", "1,0,0,x"})
        EXPECT_THAT(shop.invoke("vfViewer::SetColor", color), HasSubstr("parts from 0 to 1")) << color;
    EXPECT_THAT(shop.invoke("vfViewer::Move", VfVariant(5)), HasSubstr("offset"));
    EXPECT_EQ(before, shop.digest());
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_FALSE(shop.history().canUndo());
}

TEST(NamedCommands, EachOfTheTenViewsIsReached)
{
    const Workshop shop;
    const char* const views[] = {"Front",  "Back",      "Left",       "Right",     "Top",
                                 "Bottom", "FrontLeft", "FrontRight", "BackRight", "BackLeft"};
    for (int i = 0; i < vfScene::standardViewCount; ++i) {
        EXPECT_EQ("", shop.invoke(("vfViewer::View" + std::string(views[i])).c_str()));
        EXPECT_EQ(i, TurningView::s_view);
    }
    EXPECT_FALSE(shop.document->isModified());
}

TEST(NamedCommands, SavesUnderItsNameAndUnderAnother)
{
    const vfTest::TemporaryDirectory directory;
    const std::string file = directory.write("model.osgt", vfTest::readFile(signpost("osgt")));
    const Workshop shop(file);
    shop.invoke("vfViewer::SelectNext");
    shop.invoke("vfViewer::Remove");
    EXPECT_TRUE(shop.document->isModified());
    EXPECT_EQ("", shop.invoke("vfViewer::Save"));
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_NE(vfTest::readFile(signpost("osgt")), vfTest::readFile(file));
    EXPECT_THAT(shop.invoke("vfViewer::SaveAs", directory.file("copy.stl").c_str()),
                testing::EndsWith(
                    "copy.stl: warning: .stl files do not keep: colours of materials, smooth shading\n"));
    EXPECT_NE("", vfTest::readFile(directory.file("copy.stl")));
    EXPECT_EQ(directory.file("copy.stl"), shop.document->getFilename().str());
    EXPECT_THAT(shop.invoke("vfViewer::SaveAs"), HasSubstr("vfViewer::SaveAs=<file>"));
    EXPECT_THAT(shop.invoke("vfViewer::SaveAs", directory.file("none/copy.stl").c_str()),
                HasSubstr("No such file"));
    EXPECT_THAT(shop.invoke("vfViewer::SaveAs", directory.file("copy.xyz").c_str()), HasSubstr("copy.xyz"));
}

TEST(NamedCommands, RevertsAndCloses)
{
    const Workshop shop;
    const std::string before = shop.digest();
    shop.invoke("vfViewer::Hide");
    EXPECT_NE(before, shop.digest());
    EXPECT_EQ("", shop.invoke("vfViewer::Revert"));
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_NE(0u, shop.document->target()->getNodeMask());
    EXPECT_EQ("", shop.invoke("vfViewer::Close"));
    EXPECT_EQ(0u, shop.application->getNumDocuments());
    EXPECT_EQ("", shop.invoke("vfViewer::Hide")); // without a document nothing happens
    EXPECT_EQ("", shop.invoke("vfViewer::Close"));
}

TEST(NamedCommands, FitLooksAtTheWholeModelOrAtTheSelection)
{
    const Workshop shop;
    EXPECT_EQ("", shop.invoke("vfViewer::Fit"));
    EXPECT_EQ(-2, TurningView::s_view);
    EXPECT_THAT(shop.invoke("vfViewer::FitSelection"), HasSubstr("no part is selected"));
    shop.invoke("vfViewer::SelectNext");
    EXPECT_EQ("", shop.invoke("vfViewer::FitSelection"));
    EXPECT_EQ(-3, TurningView::s_view);
}

TEST(NamedCommands, TheCameraIsPlacedAndPrinted)
{
    const Workshop shop;
    EXPECT_EQ("", shop.invoke("vfViewer::Camera", "1,2,3,4,5.25,6,0,0,1"));
    EXPECT_EQ(osg::Vec3d(1, 2, 3), TurningView::s_camera.eye);
    EXPECT_EQ(osg::Vec3d(4, 5.25, 6), TurningView::s_camera.centre);
    EXPECT_EQ(osg::Vec3d(0, 0, 1), TurningView::s_camera.up);
    testing::internal::CaptureStdout();
    shop.invoke("vfViewer::PrintCamera");
    EXPECT_EQ("vfViewer::Camera=1,2,3,4,5.25,6,0,0,1\n", testing::internal::GetCapturedStdout());
    for (const char* wrong : {"", "1,2,3", "1,2,3,1,2,3,0,0,1", "0,0,5,0,0,0,0,0,1", "a,b,c,d,e,f,g,h,i"})
        EXPECT_THAT(shop.invoke("vfViewer::Camera", wrong), HasSubstr("to place the camera")) << wrong;
    EXPECT_EQ(osg::Vec3d(1, 2, 3), TurningView::s_camera.eye);
}

TEST(NamedCommands, CameraPlacesAreKeptAndGoneBackTo)
{
    const Workshop shop;
    EXPECT_THAT(shop.invoke("vfViewer::GoToPlace", "1"), HasSubstr("no camera place is kept"));
    EXPECT_FALSE(Command::getCommandByName("vfViewer::GoToPlace")
                     .getProperties()
                     .value("enabled", VfVariant())
                     .toBool());
    shop.invoke("vfViewer::Camera", "1,2,3,4,5,6,0,0,1");
    EXPECT_EQ("", shop.invoke("vfViewer::KeepPlace", "bow"));
    shop.invoke("vfViewer::Camera", "9,9,9,0,0,0,0,0,1");
    shop.invoke("vfViewer::Orthographic");
    EXPECT_EQ("", shop.invoke("vfViewer::KeepPlace"));
    EXPECT_TRUE(Command::getCommandByName("vfViewer::GoToPlace")
                    .getProperties()
                    .value("enabled", VfVariant())
                    .toBool());
    testing::internal::CaptureStdout();
    shop.invoke("vfViewer::PrintPlaces");
    EXPECT_EQ("bow\n2\n", testing::internal::GetCapturedStdout());
    EXPECT_EQ("", shop.invoke("vfViewer::GoToPlace", "bow"));
    EXPECT_EQ(osg::Vec3d(1, 2, 3), TurningView::s_camera.eye);
    EXPECT_EQ(vfScene::Projection::Perspective, TurningView::s_style.projection);
    EXPECT_EQ("", shop.invoke("vfViewer::GoToPlace", "2"));
    EXPECT_EQ(osg::Vec3d(9, 9, 9), TurningView::s_camera.eye);
    EXPECT_EQ(vfScene::Projection::Orthographic, TurningView::s_style.projection);
    EXPECT_EQ("", shop.invoke("vfViewer::GoToPlace", "1")); // by its number
    EXPECT_EQ(osg::Vec3d(1, 2, 3), TurningView::s_camera.eye);
    for (const char* wrong : {"", "0", "3", "aft"})
        EXPECT_THAT(shop.invoke("vfViewer::GoToPlace", wrong), HasSubstr("no camera place of that name"))
            << wrong;
    EXPECT_EQ("", shop.invoke("vfViewer::ForgetPlace", "bow"));
    EXPECT_THAT(shop.invoke("vfViewer::GoToPlace", "bow"), HasSubstr("no camera place of that name"));
    EXPECT_FALSE(shop.document->isModified());
}

TEST(NamedCommands, CameraPlacesGoWithAFileThatIsSavedUnderAnotherName)
{
    const vfTest::TemporaryDirectory directory;
    const Workshop shop;
    shop.invoke("vfViewer::KeepPlace", "bow");
    EXPECT_EQ("", shop.invoke("vfViewer::SaveAs", directory.file("other.osgb")));
    EXPECT_EQ("", shop.invoke("vfViewer::GoToPlace", "bow"));
    EXPECT_EQ(1u, vfScene::CameraBookmarks::instance().of(signpost("obj")).size());
}

TEST(NamedCommands, WhatMovesIsPutToATime)
{
    const vfTest::TemporaryDirectory directory;
    const osg::ref_ptr<osg::AnimationPath> path = new osg::AnimationPath;
    path->insert(0, osg::AnimationPath::ControlPoint({0, 0, 0}));
    path->insert(4, osg::AnimationPath::ControlPoint({8, 0, 0}));
    const osg::ref_ptr<osg::MatrixTransform> moving = new osg::MatrixTransform;
    moving->setUpdateCallback(new osg::AnimationPathCallback(path));
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(osg::createTexturedQuadGeometry({0, 0, 0}, {1, 0, 0}, {0, 0, 1}));
    moving->addChild(geode);
    ASSERT_TRUE(osgDB::writeNodeFile(*moving, directory.file("moving.osgt")));
    const Workshop shop(directory.file("moving.osgt"));
    ASSERT_TRUE(shop.document);
    EXPECT_EQ("", shop.invoke("vfViewer::AnimationTime", "1.5"));
    osg::ComputeBoundsVisitor visitor;
    shop.document->scene().accept(visitor);
    EXPECT_NEAR(3, visitor.getBoundingBox().xMin(), 1e-5);
    for (const char* wrong : {"", "-1", "x", "1,2", "nan"})
        EXPECT_THAT(shop.invoke("vfViewer::AnimationTime", wrong), HasSubstr("a time from 0")) << wrong;
    EXPECT_DOUBLE_EQ(1.5, shop.document->getAnimation().getTime());
    EXPECT_THAT(shop.invoke("vfViewer::PlayAnimation"), HasSubstr("there is no clock without a window"));
    EXPECT_THAT(shop.invoke("vfViewer::PlayAnimation", "loud"), HasSubstr("\"on\" or \"off\""));
    EXPECT_THAT(shop.invoke("vfViewer::Animation", "2"), HasSubstr("but one animation"));
    EXPECT_FALSE(shop.document->isModified());
}

TEST(NamedCommands, WhereNothingMovesNoAnimationIsPlayed)
{
    const Workshop shop;
    for (const char* name : {"vfViewer::PlayAnimation", "vfViewer::AnimationTime", "vfViewer::Animation"}) {
        EXPECT_THAT(shop.invoke(name, "1"), HasSubstr("nothing of this model moves")) << name;
        EXPECT_FALSE(Command::getCommandByName(name).getProperties().value("enabled", VfVariant()).toBool())
            << name;
    }
}

TEST(NamedCommands, EachWayOfLookingIsSwitchedOnAndOff)
{
    const Workshop shop;
    using vfScene::ViewStyle;
    const std::pair<const char*, bool ViewStyle::*> switches[] = {
        {"FlatShading", &ViewStyle::isFlat},
        {"BackfaceCulling", &ViewStyle::cullsBackFaces},
        {"Textures", &ViewStyle::showsTextures},
        {"VertexColors", &ViewStyle::showsVertexColors},
        {"Grid", &ViewStyle::showsGrid},
        {"Axes", &ViewStyle::showsAxes},
        {"BoundingBoxes", &ViewStyle::showsBoxes},
        {"Antialiasing", &ViewStyle::isAntialiased},
        {"Headlight", &ViewStyle::lightFollowsCamera},
        {"FileLamps", &ViewStyle::usesFileLamps},
    };
    const auto isChecked = [](const std::string& name) {
        return Command::getCommandByName(name).getProperties()["checked"].toBool();
    };
    for (const auto& [name, member] : switches) {
        const std::string command = std::string("vfViewer::") + name;
        const bool before = ViewStyle().*member;
        EXPECT_EQ(before, isChecked(command)) << name;
        EXPECT_EQ("", shop.invoke(command.c_str()));
        EXPECT_EQ(!before, TurningView::s_style.*member) << name;
        EXPECT_EQ(!before, isChecked(command)) << name;
        EXPECT_EQ("", shop.invoke(command.c_str(), "on"));
        EXPECT_TRUE(TurningView::s_style.*member) << name;
        EXPECT_EQ("", shop.invoke(command.c_str(), "off"));
        EXPECT_FALSE(TurningView::s_style.*member) << name;
        EXPECT_THAT(shop.invoke(command.c_str(), "perhaps"), HasSubstr("\"on\" or \"off\"")) << name;
    }
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_FALSE(shop.history().canUndo());
}

TEST(NamedCommands, WhatIsOnOrOffIsShownSoInMenus)
{
    const Workshop shop;
    for (const char* name : {"Surfaces", "Wireframe", "Perspective", "Grid", "Axes", "SectionX",
                             "FlatShading", "ToolSelect", "ToolMove", "PlayAnimation"})
        EXPECT_TRUE(
            Command::getCommandByName(std::string("vfViewer::") + name).getProperties()["checkable"].toBool())
            << name;
}

TEST(NamedCommands, WithoutASelectionMenusDoNotHideOrRemoveButScriptsDo)
{
    const Workshop shop;
    const auto isEnabled = [](const char* name) {
        return Command::getCommandByName(std::string("vfViewer::") + name)
            .getProperties()["enabled"]
            .toBool();
    };
    const char* const names[] = {"Hide", "Show", "Isolate", "Remove", "Rename"};
    for (const char* name : names)
        EXPECT_FALSE(isEnabled(name)) << name;
    EXPECT_STREQ("Select a part first: click on it",
                 Command::getCommandByName("vfViewer::Hide").getProperties()["toolTip"].toString().c_str());
    shop.invoke("vfViewer::Hide");
    EXPECT_FALSE(shop.document->getModelScene().hiddenNodes().empty());
    shop.invoke("vfViewer::SelectNext");
    for (const char* name : names)
        EXPECT_TRUE(isEnabled(name)) << name;
}

TEST(NamedCommands, OneOfSeveralWaysOfLookingIsInForce)
{
    const Workshop shop;
    using vfScene::DrawMode;
    const auto checked = [](std::initializer_list<const char*> names) {
        std::string found;
        for (const char* name : names) {
            if (Command::getCommandByName(std::string("vfViewer::") + name)
                    .getProperties()["checked"]
                    .toBool())
                found += name;
        }
        return found;
    };
    EXPECT_EQ("Surfaces", checked({"Surfaces", "Wireframe", "Points"}));
    shop.invoke("vfViewer::Wireframe");
    EXPECT_EQ(DrawMode::Wireframe, TurningView::s_style.drawMode);
    EXPECT_EQ("Wireframe", checked({"Surfaces", "Wireframe", "Points"}));
    shop.invoke("vfViewer::Points");
    EXPECT_EQ(DrawMode::Points, TurningView::s_style.drawMode);
    shop.invoke("vfViewer::Surfaces");
    EXPECT_EQ(DrawMode::Surfaces, TurningView::s_style.drawMode);
    EXPECT_THAT(shop.invoke("vfViewer::Surfaces", "off"), HasSubstr("it can be \"on\""));
    // One key goes back and forth; "on" stays.
    shop.invoke("vfViewer::Wireframe");
    shop.invoke("vfViewer::Wireframe");
    EXPECT_EQ(DrawMode::Surfaces, TurningView::s_style.drawMode);
    shop.invoke("vfViewer::Wireframe", "on");
    shop.invoke("vfViewer::Wireframe", "on");
    EXPECT_EQ(DrawMode::Wireframe, TurningView::s_style.drawMode);
    shop.invoke("vfViewer::Surfaces");
    EXPECT_EQ(DrawMode::Surfaces, TurningView::s_style.drawMode);
    EXPECT_EQ("Perspective", checked({"Perspective", "Orthographic"}));
    shop.invoke("vfViewer::Orthographic");
    EXPECT_EQ("Orthographic", checked({"Perspective", "Orthographic"}));
    shop.invoke("vfViewer::Perspective");
    EXPECT_EQ(vfScene::Projection::Perspective, TurningView::s_style.projection);
}

TEST(NamedCommands, TheBackgroundIsOneColourOrTwo)
{
    const Workshop shop;
    const auto& background = TurningView::s_style.background;
    EXPECT_EQ("", shop.invoke("vfViewer::Background", "1,0.5,0"));
    ASSERT_TRUE(background);
    EXPECT_EQ(osg::Vec3f(1, 0.5f, 0), background->top);
    EXPECT_EQ(osg::Vec3f(1, 0.5f, 0), background->bottom);
    EXPECT_EQ("", shop.invoke("vfViewer::Background", "1,1,1,0,0,0"));
    EXPECT_EQ(osg::Vec3f(1, 1, 1), background->top);
    EXPECT_EQ(osg::Vec3f(0, 0, 0), background->bottom);
    for (const char* wrong : {"", "white", "1,1", "2,0,0", "1,1,1,1", "0,0,0,0,0,9"})
        EXPECT_THAT(shop.invoke("vfViewer::Background", wrong), HasSubstr("one colour or two")) << wrong;
    EXPECT_TRUE(background);
    EXPECT_EQ("", shop.invoke("vfViewer::Background", "default"));
    EXPECT_FALSE(background);
}

TEST(NamedCommands, SectionsAreSwitchedPlacedAndFlipped)
{
    const Workshop shop;
    const auto& sections = TurningView::s_style.sections;
    const char* const names[] = {"vfViewer::SectionX", "vfViewer::SectionY", "vfViewer::SectionZ"};
    for (std::size_t i = 0; i < 3; ++i) {
        shop.invoke(names[i]);
        EXPECT_TRUE(sections[i].isOn);
        EXPECT_TRUE(Command::getCommandByName(names[i]).getProperties()["checked"].toBool());
        shop.invoke(names[i]);
        EXPECT_FALSE(sections[i].isOn);
        shop.invoke(names[i], "0.75");
        EXPECT_TRUE(sections[i].isOn);
        EXPECT_EQ(0.75, sections[i].position);
        shop.invoke(names[i], "flip");
        EXPECT_TRUE(sections[i].isFlipped);
        shop.invoke(names[i], "off");
        EXPECT_FALSE(sections[i].isOn);
        shop.invoke(names[i], "on");
        EXPECT_TRUE(sections[i].isOn);
        for (const char* wrong : {"2", "-1", "x", "0.5,0.5"})
            EXPECT_THAT(shop.invoke(names[i], wrong), HasSubstr("a section is")) << wrong;
        EXPECT_EQ(0.75, sections[i].position);
    }
}

TEST(NamedCommands, PicturesOfAnySizeAreKept)
{
    const vfTest::TemporaryDirectory directory;
    const Workshop shop;
    const auto save = [&](const std::string& before, const std::string& name) {
        return shop.invoke("vfViewer::SavePicture", (before + directory.file(name)).c_str());
    };
    EXPECT_EQ("", save("", "one.png"));
    EXPECT_EQ(1280, TurningView::s_format.width);
    EXPECT_EQ(800, TurningView::s_format.height);
    EXPECT_FALSE(TurningView::s_format.isTransparent);
    EXPECT_EQ("", save("4000x3000 ", "two.png"));
    EXPECT_EQ(4000, TurningView::s_format.width);
    EXPECT_EQ(3000, TurningView::s_format.height);
    EXPECT_EQ("", save("20x10,transparent ", "three.png"));
    EXPECT_EQ(20, TurningView::s_format.width);
    EXPECT_TRUE(TurningView::s_format.isTransparent);
    EXPECT_EQ("", save("transparent ", "four words.png"));
    EXPECT_EQ(1280, TurningView::s_format.width);
    EXPECT_TRUE(TurningView::s_format.isTransparent);
    fs::current_path(directory.path());
    EXPECT_EQ("", shop.invoke("vfViewer::SavePicture", "12 boats.png"));
    EXPECT_NE("", vfTest::readFile(directory.file("12 boats.png")));
    for (const char* name : {"one.png", "two.png", "three.png", "four words.png"})
        EXPECT_NE("", vfTest::readFile(directory.file(name))) << name;
    for (const char* size : {"0x0 ", "20000x10 ", "20x10,opaque ", "20x10transparent "})
        EXPECT_THAT(save(size, "a.png"), HasSubstr("vfViewer::SavePicture=")) << size;
    EXPECT_THAT(shop.invoke("vfViewer::SavePicture"), HasSubstr("vfViewer::SavePicture="));
    EXPECT_THAT(save("", "a.xyz"), HasSubstr("cannot write .xyz images"));
    EXPECT_THAT(save("transparent ", "a.jpg"), HasSubstr("this image format has no transparency"));
    EXPECT_THAT(save("", "none/a.png"), HasSubstr("picture not written: No such file"));
}

namespace {

/// @return the corners of what a node draws, in the coordinates of the model
osg::BoundingBox placeOf(const Workshop& shop, osg::Node& node)
{
    osg::ComputeBoundsVisitor visitor;
    const osg::NodePathList paths = node.getParentalNodePaths(&shop.document->scene());
    EXPECT_EQ(1u, paths.size());
    for (std::size_t i = 0; i + 1 < paths[0].size(); ++i)
        visitor.pushOntoNodePath(paths[0][i]);
    osg::Matrix place = osg::computeLocalToWorld({paths[0].begin(), paths[0].end() - 1});
    visitor.pushMatrix(place);
    node.accept(visitor);
    return visitor.getBoundingBox();
}

/// @return the first geometry at or below a node
osg::Geometry& geometryOf(osg::Node& node)
{
    osg::Node* found = &node;
    while (!found->asGeometry())
        found = found->asGroup()->getChild(0);
    return *found->asGeometry();
}

} // namespace

TEST(NamedCommands, APartIsTurnedAndScaledAboutItsMiddle)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    osg::Node& part = *shop.document->getSelection();
    const osg::BoundingBox before = placeOf(shop, part);
    EXPECT_EQ("", shop.invoke("vfViewer::Scale", "2"));
    const osg::BoundingBox doubled = placeOf(shop, part);
    EXPECT_NEAR(0, (before.center() - doubled.center()).length(), 1e-5);
    EXPECT_NEAR(2 * before.radius(), doubled.radius(), 1e-5);
    EXPECT_EQ("", shop.invoke("vfViewer::Move", "10,0,0"));
    EXPECT_EQ("", shop.invoke("vfViewer::Scale", "1,1,0.5"));
    const osg::BoundingBox flatter = placeOf(shop, part);
    EXPECT_NEAR(0, (before.center() + osg::Vec3(10, 0, 0) - flatter.center()).length(), 1e-4);
    EXPECT_NEAR(before.zMax() - before.zMin(), flatter.zMax() - flatter.zMin(), 1e-5);
    EXPECT_EQ("", shop.invoke("vfViewer::Rotate", "0,0,1,90"));
    const osg::BoundingBox turned = placeOf(shop, part);
    EXPECT_NEAR(0, (flatter.center() - turned.center()).length(), 1e-4);
    EXPECT_NEAR(flatter.xMax() - flatter.xMin(), turned.yMax() - turned.yMin(), 1e-4);
    // One transform stands for all of it, and each step is taken back by itself.
    EXPECT_EQ(1u, part.getNumParents());
    EXPECT_EQ(nullptr, part.getParent(0)->getParent(0)->asTransform());
    for (const osg::BoundingBox& place : {flatter, osg::BoundingBox(), doubled, before}) {
        shop.invoke("vfViewer::Undo");
        if (place.valid()) {
            EXPECT_NEAR(0, (place._min - placeOf(shop, part)._min).length(), 1e-4);
            EXPECT_NEAR(0, (place._max - placeOf(shop, part)._max).length(), 1e-4);
        }
    }
    for (const char* wrong : {"", "0", "1,2", "1,0,1", "x", "1e300"})
        EXPECT_THAT(shop.invoke("vfViewer::Scale", wrong), HasSubstr("a factor is needed")) << wrong;
    for (const char* wrong : {"", "90", "0,0,0,90", "0,0,1", "a,b,c,d"})
        EXPECT_THAT(shop.invoke("vfViewer::Rotate", wrong), HasSubstr("an axis and an angle")) << wrong;
}

TEST(NamedCommands, IsolatingHidesAllButTheSelection)
{
    const Workshop shop;
    EXPECT_THAT(shop.invoke("vfViewer::Isolate"), HasSubstr("no part is selected"));
    shop.invoke("vfViewer::SelectNext");
    const osg::Node* part = shop.document->getSelection();
    TurningView::s_updates = 0;
    EXPECT_EQ("", shop.invoke("vfViewer::Isolate"));
    EXPECT_EQ(1, TurningView::s_updates) << "or models of many parts would be drawn once for each";
    const auto isSeen = [&shop](const osg::Node& node) {
        for (const osg::NodePath& path : node.getParentalNodePaths(&shop.document->scene())) {
            if (std::all_of(path.begin(), path.end(),
                            [](const osg::Node* one) { return one->getNodeMask() != 0; }))
                return true;
        }
        return false;
    };
    for (const auto& other : shop.document->getModelScene().parts())
        EXPECT_EQ(other == part, isSeen(*other));
    EXPECT_THAT(shop.invoke("vfViewer::Isolate"), HasSubstr("nothing else"));
    EXPECT_EQ("", shop.invoke("vfViewer::Undo")); // in one step
    for (const auto& other : shop.document->getModelScene().parts())
        EXPECT_TRUE(isSeen(*other));
    EXPECT_FALSE(shop.history().canUndo());
}

TEST(NamedCommands, RenamingNeedsAName)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    const std::string before = shop.document->getSelection()->getName();
    EXPECT_EQ(before,
              Command::getCommandByName("vfViewer::Rename").getProperties()["promptValue"].toString().str());
    EXPECT_THAT(shop.invoke("vfViewer::Rename"), HasSubstr("a name is needed"));
    EXPECT_EQ("", shop.invoke("vfViewer::Rename", "Vorderdeck, über alles"));
    EXPECT_EQ("Vorderdeck, über alles", shop.document->getSelection()->getName());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(before, shop.document->getSelection()->getName());
}

TEST(NamedCommands, FlippingTurnsBothNormalsAndFaces)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    osg::Geometry& geometry = geometryOf(*shop.document->getSelection());
    const osg::ref_ptr<osg::Array> normals = geometry.getNormalArray();
    const auto normalOfFace = [&geometry] {
        struct First
        {
            osg::Vec3 normal;
            void operator()(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c)
            {
                if (normal.length2() == 0)
                    normal = (b - a) ^ (c - a);
            }
        };
        osg::TriangleFunctor<First> first;
        geometry.accept(first);
        first.normal.normalize();
        return first.normal;
    };
    const osg::Vec3 face = normalOfFace();
    EXPECT_EQ("", shop.invoke("vfViewer::FlipNormals"));
    EXPECT_NEAR(-1, face * normalOfFace(), 1e-5);
    const auto& flipped = dynamic_cast<osg::Vec3Array&>(*geometry.getNormalArray());
    EXPECT_EQ(-dynamic_cast<osg::Vec3Array&>(*normals)[0], flipped[0]);
    EXPECT_EQ("", shop.invoke("vfViewer::FlipNormals"));
    EXPECT_NEAR(1, face * normalOfFace(), 1e-5);
    shop.invoke("vfViewer::Undo");
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(normals, geometry.getNormalArray());
}

TEST(NamedCommands, NormalsAreWorkedOutAnewWithEdgesWhereSurfacesMeetSharply)
{
    const Workshop shop;
    shop.invoke("vfViewer::SelectNext");
    osg::Geometry& geometry = geometryOf(*shop.document->getSelection());
    const auto distinct = [&geometry] {
        const auto& normals = dynamic_cast<osg::Vec3Array&>(*geometry.getNormalArray());
        return std::set<osg::Vec3>(normals.begin(), normals.end()).size();
    };
    EXPECT_EQ("", shop.invoke("vfViewer::RecomputeNormals", "0"));
    const std::size_t sharp = distinct();
    EXPECT_EQ("", shop.invoke("vfViewer::RecomputeNormals", "180"));
    EXPECT_NE(sharp, distinct());
    EXPECT_EQ("", shop.invoke("vfViewer::RecomputeNormals"));
    for (const char* wrong : {"-1", "181", "x", "1,2"})
        EXPECT_THAT(shop.invoke("vfViewer::RecomputeNormals", wrong), HasSubstr("between 0 and 180"))
            << wrong;
}

TEST(NamedCommands, FilesAreAddedBesideTheModelInOneStep)
{
    const Workshop shop;
    osg::Node* const first = shop.document->scene().getChild(0);
    const std::string before = shop.digest();
    vfBase::StringList paths;
    paths.append(signpost("stl"));
    paths.append(signpost("ply"));
    const VfVariant both{paths};
    EXPECT_EQ("", shop.invoke("vfViewer::AddFile", both));
    EXPECT_TRUE(shop.document->isModified());
    ASSERT_EQ(1u, shop.document->scene().getNumChildren());
    const osg::Group& all = *shop.document->target()->asGroup();
    ASSERT_EQ(3u, all.getNumChildren());
    EXPECT_EQ(first, all.getChild(0));
    EXPECT_EQ("signpost.stl", all.getChild(1)->getName());
    EXPECT_EQ("signpost.ply", all.getChild(2)->getName());
    EXPECT_EQ("", shop.invoke("vfViewer::AddFile", signpost("obj")));
    EXPECT_EQ(4u, all.getNumChildren());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(3u, all.getNumChildren());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(before, shop.digest());
    EXPECT_EQ(first, shop.document->scene().getChild(0));
    shop.invoke("vfViewer::Redo");
    EXPECT_EQ(3u, shop.document->target()->asGroup()->getNumChildren());
    shop.invoke("vfViewer::Undo");
    // What cannot be read is told, and the others are added all the same.
    EXPECT_THAT(shop.invoke("vfViewer::AddFile", "/none.stl"), HasSubstr("/none.stl: No such file"));
    EXPECT_THAT(shop.invoke("vfViewer::AddFile", signpost("mtl")),
                HasSubstr("not a format that can be read"));
    EXPECT_THAT(shop.invoke("vfViewer::AddFile"), HasSubstr("its name is needed"));
    EXPECT_EQ(before, shop.digest());
    paths.append("/none.stl");
    const VfVariant three{paths};
    EXPECT_THAT(shop.invoke("vfViewer::AddFile", three), HasSubstr("No such file"));
    EXPECT_EQ(3u, shop.document->target()->asGroup()->getNumChildren());
}

TEST(NamedCommands, AFileIsAddedToAModelOfWhichNothingIsLeft)
{
    const Workshop shop;
    shop.invoke("vfViewer::Remove");
    EXPECT_EQ("", shop.invoke("vfViewer::AddFile", signpost("stl")));
    EXPECT_EQ(1u, shop.document->target()->asGroup()->getNumChildren());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(0u, shop.document->scene().getNumChildren());
    shop.invoke("vfViewer::Undo");
    EXPECT_EQ(1u, shop.document->scene().getNumChildren());
}

TEST(NamedCommands, OpenModelsAreMergedAsCopies)
{
    const Workshop shop;
    EXPECT_THAT(shop.invoke("vfViewer::MergeOpen"), HasSubstr("no other model is open"));
    auto* second = dynamic_cast<ModelDocument*>(
        shop.application->openDocument(signpost("stl").c_str(), vfBase::Options()));
    ASSERT_NE(nullptr, second);
    const std::string before = shop.digest();
    EXPECT_EQ("", shop.invoke("vfViewer::MergeOpen"));
    EXPECT_EQ(before, shop.digest());
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_TRUE(second->isModified());
    EXPECT_EQ(2u, second->target()->asGroup()->getNumChildren());
    // What is done to the copy is not done to what it was copied from.
    shop.invoke("vfViewer::SelectPrevious");
    shop.invoke("vfViewer::SetColor", "1,0,0");
    shop.invoke("vfViewer::Hide");
    shop.invoke("vfViewer::FlipNormals");
    EXPECT_EQ(before, shop.digest());
    for (int i = 0; i < 4; ++i)
        shop.invoke("vfViewer::Undo");
    EXPECT_EQ(1u, second->scene().getNumChildren());
    EXPECT_FALSE(second->getCommandProcessor()->canUndo());
}

TEST(ModelLook, IsThatOfTheSamePartsWhenTheFileIsReadAgain)
{
    const vfTest::TemporaryDirectory directory;
    const auto part = [](const char* name, int first) {
        std::string text = std::string("o ") + name + "\n";
        for (const char* point : {"0 0 ", "1 0 ", "0 1 "})
            text += std::string("v ") + point + std::to_string(first) + "\n";
        return text + "f " + std::to_string(first) + " " + std::to_string(first + 1) + " " +
               std::to_string(first + 2) + "\n";
    };
    const std::string path =
        directory.write("parts.obj", part("left", 1) + part("middle", 4) + part("right", 7));
    const Workshop shop(path);
    const auto named = [&shop](const std::string& name) {
        osg::Node* found = nullptr;
        for (const auto& one : shop.document->getModelScene().parts())
            found = one->getName() == name ? one.get() : found;
        return found;
    };
    ASSERT_NE(nullptr, named("right"));
    named("left")->setNodeMask(0);
    named("right")->setNodeMask(0);
    shop.document->setSelection(named("middle"));
    const ModelDocument::Look look = shop.document->getLook();
    EXPECT_EQ(2u, look.hidden.size());
    directory.write("parts.obj", part("new", 1) + part("middle", 4) + part("right", 7));
    EXPECT_TRUE(shop.document->revert());
    EXPECT_NE(0u, named("right")->getNodeMask());
    shop.document->restoreLook(look);
    EXPECT_EQ(0u, named("right")->getNodeMask());
    EXPECT_NE(0u, named("middle")->getNodeMask());
    EXPECT_NE(0u, named("new")->getNodeMask());
    EXPECT_EQ(named("middle"), shop.document->getSelection());
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_FALSE(shop.history().canUndo());
    directory.write("parts.obj", part("other", 1));
    EXPECT_TRUE(shop.document->revert());
    shop.document->restoreLook(look);
    EXPECT_EQ(nullptr, shop.document->getSelection());
    EXPECT_TRUE(shop.document->getModelScene().hiddenNodes().empty());
}

TEST(History, ForgetsTheOldestWhenItHoldsMoreThanItMay)
{
    const Workshop shop;
    vfScene::ModelScene& scene = shop.document->getModelScene();
    EXPECT_EQ(0u, scene.getHistoryMemory());
    EXPECT_EQ(std::size_t(512) * 1000 * 1000, scene.getHistoryLimit());
    shop.invoke("vfViewer::SelectNext");
    const std::size_t size = vfScene::measureMemory(*shop.document->getSelection());
    ASSERT_LT(200u, size);
    for (int i = 0; i < 4; ++i)
        shop.invoke("vfViewer::FlipNormals");
    EXPECT_EQ(4u, scene.getHistoryLength());
    EXPECT_LT(4 * size, scene.getHistoryMemory());
    scene.setHistoryLimit(scene.getHistoryMemory() - 1);
    EXPECT_EQ(3u, scene.getHistoryLength());
    EXPECT_LE(scene.getHistoryMemory(), scene.getHistoryLimit());
    const std::string now = shop.digest();
    shop.invoke("vfViewer::Hide");
    EXPECT_LE(scene.getHistoryMemory(), scene.getHistoryLimit());
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(shop.history().undo());
    EXPECT_FALSE(shop.history().canUndo());
    EXPECT_FALSE(shop.history().undo());
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(shop.history().redo());
    shop.history().undo();
    EXPECT_EQ(now, shop.digest());
    // The last one is kept however large it is.
    scene.setHistoryLimit(0);
    EXPECT_EQ(1u, scene.getHistoryLength());
}

TEST(History, HoldsWhatWasRemovedUntilItIsForgotten)
{
    const Workshop shop;
    vfScene::ModelScene& scene = shop.document->getModelScene();
    shop.invoke("vfViewer::SelectNext");
    const osg::observer_ptr<osg::Node> part = shop.document->getSelection();
    const std::size_t size = vfScene::measureMemory(*part);
    shop.invoke("vfViewer::Remove");
    EXPECT_EQ(size, scene.getHistoryMemory());
    shop.invoke("vfViewer::Undo");
    EXPECT_GT(size, scene.getHistoryMemory());
    shop.invoke("vfViewer::Redo");
    EXPECT_EQ(size, scene.getHistoryMemory());
    shop.history().clearCommands();
    shop.history().initialize();
    EXPECT_EQ(0u, scene.getHistoryLength());
    EXPECT_EQ(0u, scene.getHistoryMemory());
}

namespace {

/// @return what a command writes to standard output
std::string printed(const char* name, const VfVariant& argument = VfVariant())
{
    testing::internal::CaptureStdout();
    EXPECT_EQ("", Workshop::invoke(name, argument));
    return testing::internal::GetCapturedStdout();
}

} // namespace

TEST(NamedCommands, PropertiesAreThoseOfTheTarget)
{
    const Workshop shop;
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Shown: yes\n"));
    shop.invoke("vfViewer::SelectNext");
    osg::Node& part = *shop.document->getSelection();
    shop.invoke("vfViewer::Rename", "arm");
    const std::string told = printed("vfViewer::PrintProperties");
    const std::string triangles = std::to_string(vfScene::countModel(part).triangles);
    for (const std::string& line : {std::string("Name: arm"), std::string("Kind: Mesh"),
                                    "Triangles: " + triangles, std::string("Material: ")})
        EXPECT_THAT(told, HasSubstr(line));
    shop.invoke("vfViewer::SetColor", "0.25,0.5,0.75");
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Material: 0.25, 0.5, 0.75\n"));
    shop.invoke("vfViewer::Move", "100,0,0");
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Middle: "));
    const osg::Vec3 middle = placeOf(shop, part).center();
    EXPECT_LT(90, middle.x());
    std::ostringstream x;
    x << middle.x();
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Middle: " + x.str()));
    shop.invoke("vfViewer::Hide");
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Shown: no\n"));
    shop.invoke("vfViewer::SelectNothing");
    shop.invoke("vfViewer::Remove");
    EXPECT_THAT(shop.invoke("vfViewer::PrintProperties"), HasSubstr("the model is empty"));
}

TEST(NamedCommands, TexturesAreAmongTheProperties)
{
    const Workshop shop(VELAFORGE_SOURCE_DIR "/models/sailboat.obj");
    EXPECT_THAT(printed("vfViewer::PrintProperties"), HasSubstr("Texture: "));
}

TEST(NamedCommands, WhatWasMeasuredIsKeptWithTheModelAndIsNoChange)
{
    const Workshop shop;
    EXPECT_EQ("", shop.invoke("vfViewer::MeasureDistance", "0,0,0,3,4,0"));
    EXPECT_EQ("", shop.invoke("vfViewer::MeasureAngle", "1,0,0,0,0,0,0,1,0"));
    EXPECT_EQ("", shop.invoke("vfViewer::MeasureRadius", "1,0,0,0,1,0,-1,0,0"));
    EXPECT_EQ("distance 5\nangle 90°\nradius 1\n", printed("vfViewer::PrintMeasurements"));
    EXPECT_EQ("", shop.invoke("vfViewer::Units", "mm,cm"));
    EXPECT_EQ("distance 0.5 cm\nangle 90°\nradius 0.1 cm\n", printed("vfViewer::PrintMeasurements"));
    EXPECT_EQ("", shop.invoke("vfViewer::Units", "in"));
    EXPECT_EQ("distance 5 in\nangle 90°\nradius 1 in\n", printed("vfViewer::PrintMeasurements"));
    EXPECT_EQ("in,none",
              Command::getCommandByName("vfViewer::Units").getProperties()["promptValue"].toString().str());
    EXPECT_FALSE(shop.document->isModified());
    EXPECT_FALSE(shop.history().canUndo());
    for (const char* wrong : {"", "1,2,3", "0,0,0,1,1", "a,b,c,d,e,f", "0,0,0,1,1,1,2,2,2"})
        EXPECT_THAT(shop.invoke("vfViewer::MeasureDistance", wrong), HasSubstr("2 points are needed"))
            << wrong;
    EXPECT_THAT(shop.invoke("vfViewer::MeasureRadius", "0,0,0,1,1,1,2,2,2"), HasSubstr("no such thing"));
    for (const char* wrong : {"", "furlong", "mm,furlong", "mm,cm,m"})
        EXPECT_THAT(shop.invoke("vfViewer::Units", wrong), HasSubstr("there are the units")) << wrong;
    EXPECT_EQ("", shop.invoke("vfViewer::ClearMeasurements"));
    EXPECT_EQ("", printed("vfViewer::PrintMeasurements"));
}

TEST(NamedCommands, WhatTheMouseDoesIsChosenWhereThereIsOne)
{
    const Workshop shop;
    using vfViewer::Tool;
    TurningView::s_hasHand = true;
    const std::pair<const char*, Tool> tools[] = {{"vfViewer::ToolMove", Tool::Move},
                                                  {"vfViewer::ToolRotate", Tool::Rotate},
                                                  {"vfViewer::ToolScale", Tool::Scale},
                                                  {"vfViewer::MeasureDistance", Tool::MeasureDistance},
                                                  {"vfViewer::MeasureAngle", Tool::MeasureAngle},
                                                  {"vfViewer::MeasureRadius", Tool::MeasureRadius},
                                                  {"vfViewer::ToolSelect", Tool::Select}};
    for (const auto& [name, tool] : tools) {
        EXPECT_EQ("", shop.invoke(name));
        EXPECT_EQ(tool, TurningView::s_tool) << name;
        if (std::string(name).find("Tool") != std::string::npos) {
            EXPECT_TRUE(Command::getCommandByName(name).getProperties()["checked"].toBool()) << name;
        }
    }
    shop.invoke("vfViewer::ToolMove");
    shop.invoke("vfViewer::SelectNothing");
    EXPECT_EQ(Tool::Select, TurningView::s_tool);
    TurningView::s_hasHand = false;
    EXPECT_THAT(shop.invoke("vfViewer::ToolMove"), HasSubstr("there is no mouse without a window"));
}

TEST(NamedCommands, TheHistoryTellsWhatItHolds)
{
    const Workshop shop;
    EXPECT_EQ("0 steps hold 0 bytes of at most 512 MB\n", printed("vfViewer::PrintHistory"));
    shop.invoke("vfViewer::FlipNormals");
    EXPECT_THAT(printed("vfViewer::PrintHistory"), testing::StartsWith("1 step holds "));
}

TEST(NamedCommands, MessagesAreKeptToBeLookedAt)
{
    const Workshop shop;
    shop.invoke("vfViewer::AddFile", "/none.stl");
    EXPECT_THAT(printed("vfViewer::PrintMessages"), HasSubstr("/none.stl: No such file or directory\n"));
    auto& log = dynamic_cast<vfViewer::FailureLog&>(shop.application->getDocManager());
    for (std::size_t i = 0; i < vfViewer::FailureLog::messageLimit + 10; ++i) {
        testing::internal::CaptureStderr();
        log.onWarning("a", std::to_string(i));
        testing::internal::GetCapturedStderr();
    }
    EXPECT_EQ(vfViewer::FailureLog::messageLimit, log.messages().size());
    EXPECT_EQ("1009", log.messages().back().text);
    EXPECT_EQ("10", log.messages().front().text);
    EXPECT_THAT(printed("vfViewer::PrintMessages"), HasSubstr("a: warning: 1009\n"));
    log.clearMessages();
    EXPECT_EQ("", printed("vfViewer::PrintMessages"));
}
