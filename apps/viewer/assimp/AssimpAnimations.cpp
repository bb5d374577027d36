// SPDX-License-Identifier: MIT
#include "assimp/AssimpAnimations.h"

#include <assimp/anim.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace vfViewer {

namespace {

/// Some files say nothing of how fast their clock goes.
constexpr double usualTicksPerSecond = 25;

/// @return the value at a time, between that of the key before it and that of the one after it
template <class Key, class Mix>
auto valueAt(const Key* keys, unsigned int count, double time, Mix mix)
{
    const Key* after = std::upper_bound(keys, keys + count, time,
                                        [](double wanted, const Key& key) { return wanted < key.mTime; });
    if (after == keys)
        return keys[0].mValue;
    if (after == keys + count)
        return keys[count - 1].mValue;
    const Key* before = after - 1;
    const double length = after->mTime - before->mTime;
    return mix(before->mValue, after->mValue,
               static_cast<float>(length > 0 ? (time - before->mTime) / length : 0));
}

aiVector3D mixVectors(const aiVector3D& a, const aiVector3D& b, float part)
{
    return a + (b - a) * part;
}

aiQuaternion mixRotations(const aiQuaternion& a, const aiQuaternion& b, float part)
{
    aiQuaternion mixed;
    aiQuaternion::Interpolate(mixed, a, b, part);
    return mixed;
}

osg::AnimationPath::ControlPoint placeAt(const aiNodeAnim& channel, double time)
{
    aiVector3D position(0, 0, 0);
    aiVector3D scale(1, 1, 1);
    aiQuaternion rotation;
    if (channel.mNumPositionKeys > 0)
        position = valueAt(channel.mPositionKeys, channel.mNumPositionKeys, time, mixVectors);
    if (channel.mNumScalingKeys > 0)
        scale = valueAt(channel.mScalingKeys, channel.mNumScalingKeys, time, mixVectors);
    if (channel.mNumRotationKeys > 0)
        rotation = valueAt(channel.mRotationKeys, channel.mNumRotationKeys, time, mixRotations);
    return {osg::Vec3d(position.x, position.y, position.z),
            osg::Quat(rotation.x, rotation.y, rotation.z, rotation.w), osg::Vec3d(scale.x, scale.y, scale.z)};
}

osg::ref_ptr<osg::AnimationPath> makePath(const aiNodeAnim& channel, double ticksPerSecond)
{
    std::set<double> times;
    const auto collect = [&times](const auto* keys, unsigned int count) {
        for (unsigned int i = 0; i < count; ++i) {
            if (std::isfinite(keys[i].mTime))
                times.insert(keys[i].mTime);
        }
    };
    collect(channel.mPositionKeys, channel.mNumPositionKeys);
    collect(channel.mRotationKeys, channel.mNumRotationKeys);
    collect(channel.mScalingKeys, channel.mNumScalingKeys);
    osg::ref_ptr<osg::AnimationPath> path = new osg::AnimationPath;
    path->setLoopMode(osg::AnimationPath::LOOP);
    for (const double time : times)
        path->insert(time / ticksPerSecond, placeAt(channel, time));
    return times.size() > 1 ? path : nullptr;
}

} // namespace

AssimpAnimations::AssimpAnimations(const aiScene& scene)
{
    if (scene.mNumAnimations == 0)
        return;
    const aiAnimation& animation = *scene.mAnimations[0];
    const double speed = animation.mTicksPerSecond > 0 ? animation.mTicksPerSecond : usualTicksPerSecond;
    for (unsigned int i = 0; i < animation.mNumChannels; ++i) {
        const aiNodeAnim& channel = *animation.mChannels[i];
        if (const osg::ref_ptr<osg::AnimationPath> path = makePath(channel, speed))
            m_paths[channel.mNodeName.C_Str()] = new osg::AnimationPathCallback(path);
    }
}

osg::AnimationPathCallback* AssimpAnimations::find(const std::string& node) const
{
    const auto found = m_paths.find(node);
    return found == m_paths.end() ? nullptr : found->second.get();
}

} // namespace vfViewer
