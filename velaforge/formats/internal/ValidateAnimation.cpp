// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/ValidateAnimation.h>

#include <velaforge/formats/internal/ValidateGeometry.h>

#include <osg/Geometry>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/MorphGeometry>
#include <osgAnimation/RigGeometry>

#include <algorithm>
#include <cmath>

namespace vfFormats {

namespace {

unsigned int pointsOf(const osg::Geometry* geometry)
{
    const auto* points = geometry ? dynamic_cast<const osg::Vec3Array*>(geometry->getVertexArray()) : nullptr;
    return points ? points->getNumElements() : 0;
}

void validate(osgAnimation::RigGeometry& skin)
{
    skin.setComputeBoundingBoxCallback(nullptr); // it is as large as it is, not twice as large
    const unsigned int points = pointsOf(skin.getSourceGeometry());
    if (skin.getSourceGeometry())
        validateGeometry(*skin.getSourceGeometry());
    // What is not whole is not bent.
    if (points == 0 || !skin.getInfluenceMap()) {
        skin.setUpdateCallback(nullptr);
        return;
    }
    for (auto& [name, influence] : *skin.getInfluenceMap()) {
        const auto isOutside = [points](const osgAnimation::VertexIndexWeight& weight) {
            return weight.first >= points || !std::isfinite(weight.second);
        };
        influence.erase(std::remove_if(influence.begin(), influence.end(), isOutside), influence.end());
    }
}

void validate(osgAnimation::MorphGeometry& shape)
{
    auto& targets = shape.getMorphTargetList();
    const unsigned int points = pointsOf(&shape);
    const bool isWhole = points > 0 && std::all_of(targets.begin(), targets.end(), [points](auto& target) {
                             return target.getGeometry() && pointsOf(target.getGeometry()) == points;
                         });
    if (!isWhole)
        shape.setUpdateCallback(nullptr);
}

bool isValid(osgAnimation::Channel* channel)
{
    const osgAnimation::Sampler* sampler = channel ? channel->getSampler() : nullptr;
    const osgAnimation::KeyframeContainer* moments = sampler ? sampler->getKeyframeContainer() : nullptr;
    return moments && moments->size() > 0 && std::isfinite(channel->getStartTime()) &&
           std::isfinite(channel->getEndTime());
}

void validate(osgAnimation::AnimationManagerBase& manager)
{
    osgAnimation::AnimationList& animations = manager.getAnimationList();
    animations.erase(std::remove(animations.begin(), animations.end(), nullptr), animations.end());
    for (const osg::ref_ptr<osgAnimation::Animation>& animation : animations) {
        osgAnimation::ChannelList& channels = animation->getChannels();
        channels.erase(std::remove_if(channels.begin(), channels.end(),
                                      [](const auto& channel) { return !isValid(channel); }),
                       channels.end());
    }
}

} // namespace

void validateAnimations(osg::Node& node)
{
    if (auto* skin = dynamic_cast<osgAnimation::RigGeometry*>(&node))
        validate(*skin);
    if (auto* shape = dynamic_cast<osgAnimation::MorphGeometry*>(&node))
        validate(*shape);
    for (osg::Callback* callback = node.getUpdateCallback(); callback;
         callback = callback->getNestedCallback()) {
        if (auto* manager = dynamic_cast<osgAnimation::AnimationManagerBase*>(callback))
            validate(*manager);
    }
}

} // namespace vfFormats
