// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ValidateAnimation.h>

#include <osg/Geometry>
#include <osg/Group>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/MorphGeometry>
#include <osgAnimation/RigGeometry>

#include <gtest/gtest.h>

#include <cmath>

using vfFormats::validateAnimations;

namespace {

osg::ref_ptr<osg::Geometry> makePoints(unsigned int count)
{
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setVertexArray(new osg::Vec3Array(count));
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, int(count)));
    return geometry;
}

osg::ref_ptr<osgAnimation::RigGeometry> makeSkin()
{
    osg::ref_ptr<osgAnimation::RigGeometry> skin = new osgAnimation::RigGeometry;
    skin->setSourceGeometry(makePoints(3));
    skin->setInfluenceMap(new osgAnimation::VertexInfluenceMap);
    return skin;
}

} // namespace

TEST(ValidateAnimation, BonesCarryNoPointsThatAreNotThere)
{
    const osg::ref_ptr<osgAnimation::RigGeometry> skin = makeSkin();
    auto& influence = (*skin->getInfluenceMap())["bone"];
    influence = osgAnimation::VertexInfluence();
    for (const unsigned int point : {0u, 3u, 2u, ~0u})
        influence.emplace_back(point, 1.0f);
    influence.emplace_back(1, NAN);
    validateAnimations(*skin);
    ASSERT_EQ(2u, influence.size());
    EXPECT_EQ(0u, influence[0].first);
    EXPECT_EQ(2u, influence[1].first);
    EXPECT_TRUE(skin->getUpdateCallback());
}

TEST(ValidateAnimation, TheShapeOfASkinIsMadeSoundToo)
{
    const osg::ref_ptr<osgAnimation::RigGeometry> skin = makeSkin();
    skin->getSourceGeometry()->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, 4));
    validateAnimations(*skin);
    EXPECT_EQ(1u, skin->getSourceGeometry()->getNumPrimitiveSets());
}

TEST(ValidateAnimation, ASkinWithoutItsShapeOrItsBonesIsNotBent)
{
    const osg::ref_ptr<osgAnimation::RigGeometry> shapeless = makeSkin();
    shapeless->setSourceGeometry(nullptr);
    validateAnimations(*shapeless);
    EXPECT_FALSE(shapeless->getUpdateCallback());
    const osg::ref_ptr<osgAnimation::RigGeometry> boneless = makeSkin();
    boneless->setInfluenceMap(nullptr);
    validateAnimations(*boneless);
    EXPECT_FALSE(boneless->getUpdateCallback());
}

TEST(ValidateAnimation, ShapesOfOtherNumbersOfPointsAreNotMixed)
{
    for (const auto& [points, isMixed] : {std::pair{3u, true}, {2u, false}, {4u, false}}) {
        const osg::ref_ptr<osgAnimation::MorphGeometry> shape =
            new osgAnimation::MorphGeometry(*makePoints(3));
        shape->addMorphTarget(makePoints(points));
        validateAnimations(*shape);
        EXPECT_EQ(isMixed, shape->getUpdateCallback() != nullptr) << points;
    }
}

TEST(ValidateAnimation, AnimationsWithoutAMomentGo)
{
    const osg::ref_ptr<osgAnimation::BasicAnimationManager> manager = new osgAnimation::BasicAnimationManager;
    const osg::ref_ptr<osgAnimation::Animation> animation = new osgAnimation::Animation;
    const auto add = [&animation](const std::vector<double>& times) {
        const osg::ref_ptr<osgAnimation::Vec3LinearChannel> channel = new osgAnimation::Vec3LinearChannel;
        for (const double time : times)
            channel->getOrCreateSampler()->getOrCreateKeyframeContainer()->push_back(
                osgAnimation::Vec3Keyframe(time, osg::Vec3()));
        animation->getChannels().emplace_back(channel);
    };
    add({});
    add({0, 1});
    add({0, NAN});
    animation->getChannels().emplace_back(nullptr);
    manager->getAnimationList().push_back(animation);
    manager->getAnimationList().push_back(nullptr);
    const osg::ref_ptr<osg::Group> node = new osg::Group;
    node->setUpdateCallback(manager);
    validateAnimations(*node);
    EXPECT_EQ(1u, manager->getAnimationList().size());
    ASSERT_EQ(1u, animation->getChannels().size());
    EXPECT_EQ(1, animation->getChannels()[0]->getEndTime());
}
