// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpAnimations.h>

#include <osgAnimation/Animation>
#include <osgAnimation/StackedQuaternionElement>
#include <osgAnimation/StackedScaleElement>
#include <osgAnimation/StackedTranslateElement>

#include <assimp/anim.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>

namespace vfFormats {

namespace {

/// Some files say nothing of how fast their clock goes.
constexpr double usualTicksPerSecond = 25;

// What of a node moves; channels and the parts of a callback find one another by these.
constexpr const char* placeName = "place";
constexpr const char* turnName = "turn";
constexpr const char* sizeName = "size";

osg::Vec3 toOsg(const aiVector3D& value)
{
    return {value.x, value.y, value.z};
}

osg::Quat toOsg(const aiQuaternion& value)
{
    return {value.x, value.y, value.z, value.w};
}

/// Adds what moves one thing of a node. @return whether there is anything
template <class Channel, class Key>
bool addChannel(osgAnimation::Animation& animation, const aiNodeAnim& moved, const char* name,
                const Key* keys, unsigned int count, double ticksPerSecond)
{
    const osg::ref_ptr<Channel> channel = new Channel;
    auto& frames = *channel->getOrCreateSampler()->getOrCreateKeyframeContainer();
    using Frame = typename std::decay_t<decltype(frames)>::value_type;
    for (unsigned int i = 0; i < count; ++i) {
        if (std::isfinite(keys[i].mTime))
            frames.push_back(Frame(keys[i].mTime / ticksPerSecond, toOsg(keys[i].mValue)));
    }
    if (frames.empty())
        return false;
    std::stable_sort(frames.begin(), frames.end(),
                     [](const Frame& a, const Frame& b) { return a.getTime() < b.getTime(); });
    channel->setName(name);
    channel->setTargetName(moved.mNodeName.C_Str());
    animation.addChannel(channel);
    return true;
}

bool addChannels(osgAnimation::Animation& animation, const aiNodeAnim& moved, double ticksPerSecond)
{
    using osgAnimation::QuatSphericalLinearChannel;
    using osgAnimation::Vec3LinearChannel;
    const bool places = addChannel<Vec3LinearChannel>(animation, moved, placeName, moved.mPositionKeys,
                                                      moved.mNumPositionKeys, ticksPerSecond);
    const bool turns = addChannel<QuatSphericalLinearChannel>(animation, moved, turnName, moved.mRotationKeys,
                                                              moved.mNumRotationKeys, ticksPerSecond);
    const bool sizes = addChannel<Vec3LinearChannel>(animation, moved, sizeName, moved.mScalingKeys,
                                                     moved.mNumScalingKeys, ticksPerSecond);
    return places || turns || sizes;
}

} // namespace

osg::Matrixd toOsg(const aiMatrix4x4& matrix)
{
    return {matrix.a1, matrix.b1, matrix.c1, matrix.d1, matrix.a2, matrix.b2, matrix.c2, matrix.d2,
            matrix.a3, matrix.b3, matrix.c3, matrix.d3, matrix.a4, matrix.b4, matrix.c4, matrix.d4};
}

AssimpAnimations::AssimpAnimations(const aiScene& scene)
{
    for (unsigned int i = 0; i < scene.mNumAnimations; ++i) {
        const aiAnimation& source = *scene.mAnimations[i];
        const double speed = source.mTicksPerSecond > 0 ? source.mTicksPerSecond : usualTicksPerSecond;
        const osg::ref_ptr<osgAnimation::Animation> animation = new osgAnimation::Animation;
        for (unsigned int k = 0; k < source.mNumChannels; ++k) {
            const aiNodeAnim& moved = *source.mChannels[k];
            if (addChannels(*animation, moved, speed))
                m_moved.insert(moved.mNodeName.C_Str());
        }
        animation->computeDuration();
        if (animation->getChannels().empty() || !(animation->getDuration() > 0))
            continue;
        animation->setName(source.mName.C_Str());
        if (!m_manager)
            m_manager = new osgAnimation::BasicAnimationManager;
        m_manager->registerAnimation(animation);
    }
    if (!m_manager)
        m_moved.clear(); // what is told for one moment only does not move
}

void AssimpAnimations::follow(osgAnimation::UpdateMatrixTransform& callback, const aiMatrix4x4& matrix)
{
    aiVector3D size(1, 1, 1);
    aiQuaternion turn;
    aiVector3D place;
    matrix.Decompose(size, turn, place);
    osgAnimation::StackedTransform& parts = callback.getStackedTransforms();
    parts.push_back(new osgAnimation::StackedTranslateElement(placeName, toOsg(place)));
    parts.push_back(new osgAnimation::StackedQuaternionElement(turnName, toOsg(turn)));
    parts.push_back(new osgAnimation::StackedScaleElement(sizeName, toOsg(size)));
}

} // namespace vfFormats
