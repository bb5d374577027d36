// SPDX-License-Identifier: MIT
#include "model/ModelDocument.h"
#include "support/ModelDigest.h"
#include "support/Reading.h"
#include <velaforge/scene/ModelAnimation.h>
#include <velaforge/scene/ShownScene.h>

#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/WriteJob.h>
#include <velaforge/headless/OffscreenRenderer.h>

#include <osg/AnimationPath>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/MatrixTransform>
#include <osg/Sequence>
#include <osg/ShapeDrawable>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/RigGeometry>

#include <gmock/gmock.h>

#include <cmath>

using testing::ElementsAre;
using testing::IsEmpty;
using vfScene::ModelAnimation;

namespace {

const std::string windmill = VELAFORGE_SOURCE_DIR "/models/windmill.gltf";

osg::ref_ptr<osg::Node> makeBox()
{
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(new osg::ShapeDrawable(new osg::Box));
    return geode;
}

/// A part that goes from 0 to 3 along x, a unit a second.
osg::ref_ptr<osg::MatrixTransform> makeMoving(osg::AnimationPath::LoopMode mode = osg::AnimationPath::LOOP)
{
    const osg::ref_ptr<osg::AnimationPath> path = new osg::AnimationPath;
    path->setLoopMode(mode);
    path->insert(0, osg::AnimationPath::ControlPoint({0, 0, 0}));
    path->insert(3, osg::AnimationPath::ControlPoint({3, 0, 0}));
    osg::ref_ptr<osg::MatrixTransform> moving = new osg::MatrixTransform(osg::Matrix::translate(0, 7, 0));
    moving->setUpdateCallback(new osg::AnimationPathCallback(path));
    moving->addChild(makeBox());
    return moving;
}

class Animated : public vfTest::Reading
{
protected:
    ModelAnimation& animation() { return document.getAnimation(); }

    void show(osg::Node* model)
    {
        document.getModelScene().setModel(model);
        animation().reset();
    }

    /// A model of a file. @return whether it could be read
    bool show(const std::string& path)
    {
        const vfFormats::ReadOutcome outcome = read(path);
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_THAT(outcome.warnings, IsEmpty());
        show(outcome.scene);
        return outcome.scene.valid();
    }

    osg::Node* named(const std::string& name) const
    {
        struct Find : osg::NodeVisitor
        {
            explicit Find(const std::string& wanted) : NodeVisitor(TRAVERSE_ALL_CHILDREN), name(wanted) {}
            void apply(osg::Node& node) override
            {
                if (node.getName() == name && !found)
                    found = &node;
                traverse(node);
            }
            const std::string& name;
            osg::Node* found = nullptr;
        } find(name);
        document.scene().accept(find);
        return find.found;
    }

    osg::BoundingBox boundsOf(const std::string& name) const
    {
        osg::Node* node = named(name);
        EXPECT_TRUE(node) << name;
        osg::ComputeBoundsVisitor visitor;
        if (node)
            node->accept(visitor);
        return visitor.getBoundingBox();
    }

    vfViewer::ModelDocument document;
};

/// The windmill needs a reader that may not be there.
class Windmill : public Animated
{
protected:
    void SetUp() override
    {
        if (!vfFormats::hasAssimp())
            GTEST_SKIP() << "built without Assimp";
        ASSERT_TRUE(show(windmill));
    }
};

double x(const osg::MatrixTransform& node)
{
    return node.getMatrix().getTrans().x();
}

} // namespace

TEST_F(Animated, AModelThatStandsStillHasNone)
{
    show(makeBox());
    EXPECT_TRUE(animation().isEmpty());
    EXPECT_EQ(0, animation().getDuration());
    EXPECT_THAT(animation().getNames(), IsEmpty());
    EXPECT_FALSE(animation().setCurrent(0));
    EXPECT_FALSE(document.play(true));
}

TEST_F(Animated, AModelStandsAsItsFileHasItUntilItIsMoved)
{
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving();
    show(moving);
    EXPECT_FALSE(animation().isEmpty());
    EXPECT_FALSE(animation().isPlaying());
    EXPECT_EQ(7, moving->getMatrix().getTrans().y());
}

TEST_F(Animated, APartStandsWhereItsPathSaysThenAndBeginsAgainAfterTheEnd)
{
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving();
    show(moving);
    EXPECT_DOUBLE_EQ(3, animation().getDuration());
    for (const auto& [time, place] : {std::pair{0.0, 0.0}, {1.0, 1.0}, {2.5, 2.5}, {0.5, 0.5}, {4.0, 1.0}}) {
        animation().setTime(time);
        EXPECT_NEAR(place, x(*moving), 1e-9) << time;
    }
    EXPECT_DOUBLE_EQ(1, animation().getTime());
    animation().setTime(-1);
    EXPECT_EQ(0, animation().getTime());
}

TEST_F(Animated, APathThatSwingsComesBackBeforeItBeginsAgain)
{
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving(osg::AnimationPath::SWING);
    show(moving);
    EXPECT_DOUBLE_EQ(6, animation().getDuration());
    animation().setTime(5);
    EXPECT_NEAR(1, x(*moving), 1e-9);
}

TEST_F(Animated, HiddenPartsAreInTheirPlacesWhenTheyAreShown)
{
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving();
    moving->setNodeMask(0);
    show(moving);
    animation().setTime(2);
    EXPECT_NEAR(2, x(*moving), 1e-9);
}

TEST_F(Animated, WhatIsAddedLaterMovesToo)
{
    show(makeBox());
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving();
    document.scene().addChild(moving);
    document.getModelScene().changed();
    EXPECT_FALSE(animation().isEmpty());
    animation().setTime(1.5);
    EXPECT_NEAR(1.5, x(*moving), 1e-9);
}

TEST_F(Animated, ASequenceShowsTheChildOfThatTime)
{
    const osg::ref_ptr<osg::Sequence> sequence = new osg::Sequence;
    for (const double seconds : {1.0, 2.0, 0.5})
        sequence->addChild(makeBox(), seconds);
    sequence->setInterval(osg::Sequence::LOOP, 0, -1);
    sequence->setDuration(1, -1);
    show(sequence);
    EXPECT_EQ(0, sequence->getValue()) << "one that never began would show nothing";
    EXPECT_DOUBLE_EQ(3.5, animation().getDuration());
    for (const auto& [time, child] : {std::pair{0.5, 0}, {1.5, 1}, {3.2, 2}, {0.2, 0}, {4.0, 0}}) {
        animation().setTime(time);
        EXPECT_EQ(child, sequence->getValue()) << time;
    }
    sequence->setInterval(osg::Sequence::SWING, 0, -1);
    EXPECT_DOUBLE_EQ(5.5, animation().getDuration());
    animation().setTime(4);
    EXPECT_EQ(1, sequence->getValue());
    sequence->setInterval(osg::Sequence::LOOP, -1, 0);
    animation().setTime(0);
    EXPECT_EQ(2, sequence->getValue());
    sequence->setDuration(2, -1);
    EXPECT_DOUBLE_EQ(1.75, animation().getDuration());
}

TEST_F(Animated, ASequenceWithoutChildrenOrTimesIsNoTrouble)
{
    const osg::ref_ptr<osg::Group> model = new osg::Group;
    const osg::ref_ptr<osg::Sequence> timeless = new osg::Sequence;
    timeless->addChild(makeBox(), 0);
    timeless->addChild(makeBox(), std::nan(""));
    model->addChild(new osg::Sequence);
    model->addChild(timeless);
    show(model);
    animation().setTime(2);
    EXPECT_EQ(0, animation().getDuration());
}

TEST_F(Animated, WhatMovesInAWayNobodyKnowsHasNoEnd)
{
    struct Rise : osg::NodeCallback
    {
        void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
        {
            dynamic_cast<osg::MatrixTransform*>(node)->setMatrix(
                osg::Matrix::translate(visitor->getFrameStamp()->getSimulationTime(), 0, 0));
            traverse(node, visitor);
        }
    };
    const osg::ref_ptr<osg::MatrixTransform> moving = new osg::MatrixTransform;
    moving->setUpdateCallback(new Rise);
    moving->addChild(makeBox());
    show(moving);
    EXPECT_FALSE(animation().isEmpty());
    EXPECT_EQ(0, animation().getDuration());
    animation().setTime(1234.5);
    EXPECT_DOUBLE_EQ(1234.5, x(*moving));
}

TEST_F(Animated, DrawingMovesNothing)
{
    const osg::ref_ptr<osg::MatrixTransform> moving = makeMoving();
    show(moving);
    animation().setTime(1);
    for (const bool showsColors : {true, false}) {
        vfScene::ShownScene scene(document.getModelScene());
        vfScene::ViewStyle style;
        style.showsVertexColors = showsColors;
        scene.setStyle(style);
        const vfScene::CameraPlacement camera =
            vfScene::placeCamera(document.scene(), vfScene::StandardView::Front, 1);
        vfApplication::OffscreenRenderer renderer;
        vfBase::VfString reason;
        ASSERT_TRUE(renderer.render(scene.root(), camera.view, camera.projection, 32, 32, reason)) << reason;
        EXPECT_NEAR(1, x(*moving), 1e-9);
    }
}

TEST_F(Animated, ACopyThatIsShownFollows)
{
    show(makeMoving());
    vfScene::ShownScene scene(document.getModelScene());
    vfScene::ViewStyle style;
    style.showsVertexColors = false; // which are taken from a copy
    scene.setStyle(style);
    const auto shownX = [&scene] {
        osg::ComputeBoundsVisitor visitor;
        scene.root().accept(visitor);
        return visitor.getBoundingBox().center().x();
    };
    animation().setTime(2);
    scene.follow();
    EXPECT_NEAR(2, shownX(), 1e-5);
}

TEST_F(Windmill, TheAnimationsOfAFileHaveItsNamesAndOneIsPlayedAtATime)
{
    EXPECT_THAT(animation().getNames(), ElementsAre("breeze", "gale"));
    EXPECT_EQ(0u, animation().getCurrent());
    EXPECT_NEAR(4, animation().getDuration(), 1e-5);
    animation().setTime(1); // a quarter turn
    const auto& sails = dynamic_cast<osg::MatrixTransform&>(*named("sails"));
    EXPECT_NEAR(
        0, (osg::Matrix::transform3x3(osg::Vec3d(1, 0, 0), sails.getMatrix()) - osg::Vec3d(0, 1, 0)).length(),
        1e-4);
    ASSERT_TRUE(animation().setCurrent(1));
    EXPECT_EQ(0, animation().getTime());
    EXPECT_NEAR(2, animation().getDuration(), 1e-5);
    animation().setTime(1); // three half turns
    EXPECT_NEAR(
        0,
        (osg::Matrix::transform3x3(osg::Vec3d(1, 0, 0), sails.getMatrix()) - osg::Vec3d(-1, 0, 0)).length(),
        1e-4);
    EXPECT_FALSE(animation().setCurrent(2));
    EXPECT_EQ(1u, animation().getCurrent());
}

TEST_F(Windmill, BonesCarryTheirSkin)
{
    // The cloth was written where no bone is; they take it to the top of the pole.
    const osg::BoundingBox before = boundsOf("flag");
    EXPECT_NEAR(0, before.xMin(), 1e-4);
    EXPECT_NEAR(1.6, before.xMax(), 1e-4);
    EXPECT_NEAR(4.15, before.yMin(), 1e-4);
    EXPECT_NEAR(0, before.zMax() - before.zMin(), 1e-4) << "still";
    animation().setTime(0.3);
    const osg::BoundingBox bent = boundsOf("flag");
    EXPECT_LT(0.02, bent.zMax() - bent.zMin());
    EXPECT_NEAR(4.15, bent.yMin(), 1e-4);
    EXPECT_NEAR(0, bent.xMin(), 0.05);
    animation().setTime(4 * 0.3); // goes on with the same cloth, not with the bent one
    animation().setTime(0.3);
    EXPECT_NEAR(bent.zMax(), boundsOf("flag").zMax(), 1e-6);
    EXPECT_NEAR(bent.xMax(), boundsOf("flag").xMax(), 1e-6);
}

TEST_F(Windmill, PlayingIsNoChangeAndASavedModelMovesAsBefore)
{
    animation().setTime(0.3);
    const osg::BoundingBox bent = boundsOf("flag");
    EXPECT_FALSE(document.isModified());
    const std::string saved = directory.file("saved.osgb");
    ASSERT_EQ("", vfFormats::writeModel(document.scene(), saved).reason);
    ASSERT_TRUE(show(saved));
    EXPECT_THAT(animation().getNames(), ElementsAre("breeze", "gale"));
    animation().setTime(2);
    EXPECT_LT(0.02, std::abs(bent.zMax() - boundsOf("flag").zMax()));
    animation().setTime(0.3);
    EXPECT_NEAR(bent.zMax(), boundsOf("flag").zMax(), 1e-5);
    EXPECT_NEAR(bent.yMin(), boundsOf("flag").yMin(), 1e-5);
}

TEST_F(Windmill, SkinsHaveNormalsThatBendWithThem)
{
    struct Find : osg::NodeVisitor
    {
        Find() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
        void apply(osg::Geometry& geometry) override
        {
            if (dynamic_cast<osgAnimation::RigGeometry*>(&geometry))
                skin = &geometry;
        }
        osg::Geometry* skin = nullptr;
    } find;
    document.scene().accept(find);
    ASSERT_TRUE(find.skin);
    animation().setTime(0.3);
    const auto* normals = dynamic_cast<const osg::Vec3Array*>(find.skin->getNormalArray());
    ASSERT_TRUE(normals);
    ASSERT_EQ(find.skin->getVertexArray()->getNumElements(), normals->getNumElements());
    float most = 0;
    for (const osg::Vec3& normal : *normals) {
        EXPECT_NEAR(1, normal.length(), 0.01);
        most = std::max(most, std::abs(normal.x()));
    }
    EXPECT_LT(0.05f, most);
}
