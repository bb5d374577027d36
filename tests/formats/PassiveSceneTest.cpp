// SPDX-License-Identifier: MIT
#include "support/Reading.h"

#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/formats/readers/PassiveScene.h>
#include <velaforge/formats/readers/TrialFrame.h>

#include <osg/AnimationPath>
#include <osg/Camera>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/ImageSequence>
#include <osg/LOD>
#include <osg/MatrixTransform>
#include <osg/PagedLOD>
#include <osg/Program>
#include <osg/ProxyNode>
#include <osg/Texture2D>
#include <osg/VertexProgram>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::isPassive;
using vfFormats::makePassive;
using vfFormats::ReadOutcome;

namespace {

osg::ref_ptr<osg::Geode> makeTriangle()
{
    const osg::ref_ptr<osg::Vec3Array> points = new osg::Vec3Array;
    points->push_back({0, 0, 0});
    points->push_back({1, 0, 0});
    points->push_back({0, 1, 0});
    const osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(points);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_TRIANGLES, 0, 3));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(geometry);
    return geode;
}

const char* const triangleText = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

/// A scene with a triangle, and another node beside it.
osg::ref_ptr<osg::Group> besideATriangle(osg::Node* node)
{
    osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(makeTriangle());
    scene->addChild(node);
    return scene;
}

/// Nodes that name a file to be loaded when they are shown.
std::vector<osg::ref_ptr<osg::Node>> namingForLater(const std::string& file)
{
    const osg::ref_ptr<osg::PagedLOD> paged = new osg::PagedLOD;
    paged->setFileName(0, file);
    paged->setRange(0, 0, 1e10f);
    const osg::ref_ptr<osg::ProxyNode> proxy = new osg::ProxyNode;
    proxy->setFileName(0, file);
    proxy->setLoadingExternalReferenceMode(osg::ProxyNode::DEFER_LOADING_TO_DATABASE_PAGER);
    return {paged, proxy};
}

unsigned int trianglesOf(osg::Node& scene)
{
    struct Count : osg::NodeVisitor
    {
        Count() : NodeVisitor(TRAVERSE_ALL_CHILDREN) {}
        void apply(osg::Geometry&) override { ++count; }
        unsigned int count = 0;
    } visitor;
    scene.accept(visitor);
    return visitor.count;
}

struct Callback : osg::NodeCallback
{
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override
    {
        ++calls;
        traverse(node, visitor);
    }
    int calls = 0;
};

class PassiveScenes : public vfTest::Reading
{
protected:
    /// Writes a scene as it is, and reads it as the program does.
    ReadOutcome written(osg::Node& scene) const
    {
        const std::string path = directory.file("a.osgt");
        EXPECT_TRUE(osgDB::writeNodeFile(scene, path));
        return read(path);
    }
};

} // namespace

TEST_F(PassiveScenes, AModelOfOrdinaryPartsStaysAsItIs)
{
    osg::ref_ptr<osg::Node> scene = new osg::Group;
    scene->asGroup()->addChild(new osg::MatrixTransform);
    scene->asGroup()->getChild(0)->asGroup()->addChild(makeTriangle());
    scene->asGroup()->getChild(0)->setUpdateCallback(new osg::AnimationPathCallback);
    const osg::ref_ptr<osg::Node> before = scene;
    std::vector<std::string> warnings;
    EXPECT_TRUE(isPassive(*scene));
    EXPECT_TRUE(makePassive(scene, warnings));
    EXPECT_EQ(before, scene);
    EXPECT_TRUE(scene->asGroup()->getChild(0)->getUpdateCallback());
    EXPECT_THAT(warnings, IsEmpty());
}

TEST_F(PassiveScenes, ShadersAreLeftOutAndTold)
{
    osg::ref_ptr<osg::Node> scene = makeTriangle();
    scene->getOrCreateStateSet()->setAttribute(new osg::Program);
    scene->getOrCreateStateSet()->setAttribute(new osg::VertexProgram);
    std::vector<std::string> warnings;
    EXPECT_FALSE(isPassive(*scene));
    EXPECT_TRUE(makePassive(scene, warnings));
    EXPECT_TRUE(isPassive(*scene));
    EXPECT_FALSE(scene->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM));
    EXPECT_THAT(warnings, Contains(HasSubstr("osg::Program")));
    EXPECT_THAT(warnings, Contains(HasSubstr("osg::VertexProgram")));
}

TEST_F(PassiveScenes, AShaderOfAFileDoesNotReachTheProgram)
{
    const osg::ref_ptr<osg::Geode> shaded = makeTriangle();
    shaded->getOrCreateStateSet()->setAttribute(new osg::Program);
    const ReadOutcome outcome = written(*besideATriangle(shaded));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_TRUE(isPassive(*outcome.scene));
    EXPECT_THAT(outcome.warnings, Contains(HasSubstr("osg::Program is left out")));
}

TEST_F(PassiveScenes, CallbacksOfOtherKindsAreRemovedAndTheRestOfTheirChainStays)
{
    osg::ref_ptr<osg::Node> scene = makeTriangle();
    scene->addUpdateCallback(new Callback);
    scene->addUpdateCallback(new osg::AnimationPathCallback);
    scene->setCullCallback(new Callback);
    scene->setEventCallback(new Callback);
    scene->getOrCreateStateSet()->setUpdateCallback(new osg::StateSet::Callback);
    std::vector<std::string> warnings;
    EXPECT_TRUE(makePassive(scene, warnings));
    EXPECT_TRUE(isPassive(*scene));
    EXPECT_TRUE(dynamic_cast<osg::AnimationPathCallback*>(scene->getUpdateCallback()));
    EXPECT_FALSE(scene->getCullCallback());
    EXPECT_FALSE(scene->getEventCallback());
}

TEST_F(PassiveScenes, AGroupOfAnotherKindBecomesAPlainOneInItsPlace)
{
    const osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setName("camera");
    camera->setViewMatrix(osg::Matrix::translate(1, 2, 3));
    camera->addChild(makeTriangle());
    osg::ref_ptr<osg::Node> scene = new osg::Group;
    scene->asGroup()->addChild(camera);
    scene->asGroup()->addChild(camera);
    std::vector<std::string> warnings;
    EXPECT_TRUE(makePassive(scene, warnings));
    EXPECT_TRUE(isPassive(*scene));
    ASSERT_EQ(2u, scene->asGroup()->getNumChildren());
    EXPECT_EQ(scene->asGroup()->getChild(0), scene->asGroup()->getChild(1));
    EXPECT_EQ("camera", scene->asGroup()->getChild(0)->getName());
    EXPECT_EQ(2u, trianglesOf(*scene));
    osg::ref_ptr<osg::Node> alone = camera;
    EXPECT_TRUE(makePassive(alone, warnings));
    EXPECT_TRUE(isPassive(*alone));
    EXPECT_EQ(1u, trianglesOf(*alone));
}

TEST_F(PassiveScenes, AnImageThatLoadsItselfIsLeftOut)
{
    osg::ref_ptr<osg::Node> scene = makeTriangle();
    const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(new osg::ImageSequence);
    scene->getOrCreateStateSet()->setTextureAttributeAndModes(0, texture);
    std::vector<std::string> warnings;
    EXPECT_TRUE(makePassive(scene, warnings));
    EXPECT_TRUE(isPassive(*scene));
    EXPECT_FALSE(texture->getImage());
}

TEST_F(PassiveScenes, ScenesWithoutEndAreRefused)
{
    osg::ref_ptr<osg::Node> deep = makeTriangle();
    for (unsigned int i = 0; i < vfFormats::deepestScene; ++i) {
        const osg::ref_ptr<osg::Group> above = new osg::Group;
        above->addChild(deep);
        deep = above;
    }
    std::vector<std::string> warnings;
    EXPECT_FALSE(isPassive(*deep));
    EXPECT_FALSE(makePassive(deep, warnings));
    // Each level leads to the next one twice.
    osg::ref_ptr<osg::Node> wide = makeTriangle();
    for (int i = 0; i < 40; ++i) {
        const osg::ref_ptr<osg::Group> above = new osg::Group;
        above->addChild(wide);
        above->addChild(wide);
        wide = above;
    }
    EXPECT_FALSE(isPassive(*wide));
    EXPECT_FALSE(makePassive(wide, warnings));
}

TEST_F(PassiveScenes, FilesThatASceneNamesForLaterAreReadWithIt)
{
    directory.write("b.obj", triangleText);
    for (const osg::ref_ptr<osg::Node>& naming : namingForLater("b.obj")) {
        const ReadOutcome outcome = written(*besideATriangle(naming));
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_TRUE(isPassive(*outcome.scene));
        EXPECT_EQ(2u, trianglesOf(*outcome.scene)) << naming->className();
    }
}

TEST_F(PassiveScenes, ASceneWhoseOtherFileIsMissingIsShownWithoutIt)
{
    for (const osg::ref_ptr<osg::Node>& naming : namingForLater("b.obj")) {
        const ReadOutcome outcome = written(*besideATriangle(naming));
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_TRUE(isPassive(*outcome.scene));
        EXPECT_EQ(1u, trianglesOf(*outcome.scene));
        EXPECT_THAT(outcome.warnings, Contains(HasSubstr("b.obj")));
    }
}

TEST_F(PassiveScenes, AFileThatNamesItselfIsReadAHundredTimes)
{
    const osg::ref_ptr<osg::ProxyNode> itself = new osg::ProxyNode;
    itself->setFileName(0, "a.osgt");
    const std::string path = directory.file("a.osgt");
    ASSERT_TRUE(osgDB::writeNodeFile(*besideATriangle(itself), path));
    const ReadOutcome outcome = read(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(100u, trianglesOf(*outcome.scene));
    EXPECT_THAT(outcome.warnings, Contains(HasSubstr("a.osgt: a model may have 100 files")));
}

TEST_F(PassiveScenes, AFileForLaterThatCrashesItsReaderHarmsNobody)
{
    directory.write("evil.ply",
                    "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\n"
                    "property float z\nelement face 1\nproperty list uchar int vertex_indices\n"
                    "end_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 999999999\n");
    for (const osg::ref_ptr<osg::Node>& naming : namingForLater("evil.ply")) {
        const ReadOutcome outcome = written(*besideATriangle(naming));
        EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty()) << outcome.reason;
        EXPECT_TRUE(!outcome.scene || isPassive(*outcome.scene));
    }
}

TEST(TrialFrame, UpdatesAndCullsHiddenPartsToo)
{
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(makeTriangle());
    scene->getChild(0)->setNodeMask(0);
    const osg::ref_ptr<Callback> update = new Callback;
    const osg::ref_ptr<Callback> cull = new Callback;
    scene->getChild(0)->setUpdateCallback(update);
    scene->getChild(0)->setCullCallback(cull);
    vfFormats::runTrialFrame(*scene);
    EXPECT_EQ(1, update->calls);
    EXPECT_EQ(1, cull->calls);
}
