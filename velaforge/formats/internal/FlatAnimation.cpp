// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatKinds.h>

#include <osg/AnimationPath>
#include <osgAnimation/BasicAnimationManager>
#include <osgAnimation/Channel>
#include <osgAnimation/MorphGeometry>
#include <osgAnimation/RigGeometry>
#include <osgAnimation/Skeleton>
#include <osgAnimation/StackedMatrixElement>
#include <osgAnimation/StackedQuaternionElement>
#include <osgAnimation/StackedRotateAxisElement>
#include <osgAnimation/StackedScaleElement>
#include <osgAnimation/StackedTransform>
#include <osgAnimation/StackedTranslateElement>
#include <osgAnimation/UpdateBone>
#include <osgAnimation/UpdateMatrixTransform>

#include <string>
#include <utility>
#include <vector>

namespace vfFormats {

namespace {

namespace animation = osgAnimation;

template <class Object>
void exchangeName(FlatFields& fields, Object& object)
{
    fields.value(
        object, [](const auto& from) { return from.getName(); },
        [](auto& to, const std::string& name) { to.setName(name); });
}

// The classes of the parts of animations are few, and each part belongs to one whole, so they have no numbers.

/// Exchanges a list of parts, without those of other classes. @param add  takes one that arrives
template <class Base, class List, class Add>
void exchangeParts(FlatFields& fields, const FlatKinds<Base>& kinds, const List& parts, Add add)
{
    std::vector<Base*> sent;
    for (const osg::ref_ptr<Base>& one : parts) {
        if (fields.isWriting() && one && findKind(kinds, *one) < kinds.size())
            sent.push_back(one);
    }
    fields.list(sent.size(), [&](unsigned int i) {
        auto kind = static_cast<std::uint32_t>(fields.isWriting() ? findKind(kinds, *sent[i]) : 0);
        fields.plain(kind);
        if (!fields.require(kind < kinds.size()))
            return;
        const osg::ref_ptr<Base> one = fields.isWriting() ? osg::ref_ptr<Base>(sent[i]) : kinds[kind].make();
        kinds[kind].exchange(fields, *one);
        if (fields.isMaking() && fields.isGood())
            add(one);
    });
}

void exchange(FlatFields& fields, animation::StackedTranslateElement& element)
{
    exchangeName(fields, element);
    fields.value(element, &animation::StackedTranslateElement::getTranslate,
                 &animation::StackedTranslateElement::setTranslate);
}

void exchange(FlatFields& fields, animation::StackedQuaternionElement& element)
{
    exchangeName(fields, element);
    fields.value(element, &animation::StackedQuaternionElement::getQuaternion,
                 &animation::StackedQuaternionElement::setQuaternion);
}

void exchange(FlatFields& fields, animation::StackedRotateAxisElement& element)
{
    exchangeName(fields, element);
    fields.value(element, &animation::StackedRotateAxisElement::getAxis,
                 &animation::StackedRotateAxisElement::setAxis);
    fields.value(element, &animation::StackedRotateAxisElement::getAngle,
                 &animation::StackedRotateAxisElement::setAngle);
}

void exchange(FlatFields& fields, animation::StackedScaleElement& element)
{
    exchangeName(fields, element);
    fields.value(element, &animation::StackedScaleElement::getScale,
                 &animation::StackedScaleElement::setScale);
}

void exchange(FlatFields& fields, animation::StackedMatrixElement& element)
{
    exchangeName(fields, element);
    fields.value(element, &animation::StackedMatrixElement::getMatrix,
                 &animation::StackedMatrixElement::setMatrix);
}

const FlatKinds<animation::StackedTransformElement>& elementKinds()
{
    using Base = animation::StackedTransformElement;
    static const FlatKinds<Base> kinds = {flatKind<animation::StackedTranslateElement, Base, exchange>(),
                                          flatKind<animation::StackedQuaternionElement, Base, exchange>(),
                                          flatKind<animation::StackedRotateAxisElement, Base, exchange>(),
                                          flatKind<animation::StackedScaleElement, Base, exchange>(),
                                          flatKind<animation::StackedMatrixElement, Base, exchange>()};
    return kinds;
}

template <class Value>
void exchangeMoment(FlatFields& fields, Value& value)
{
    fields.plain(value);
}

template <class Value>
void exchangeMoment(FlatFields& fields, animation::TemplateCubicBezier<Value>& curve)
{
    fields.plain(curve.getPosition());
    fields.plain(curve.getControlPointIn());
    fields.plain(curve.getControlPointOut());
}

template <class Sampler>
void exchange(FlatFields& fields, animation::TemplateChannel<Sampler>& channel)
{
    using Channel = animation::TemplateChannel<Sampler>;
    exchangeName(fields, channel);
    fields.value(channel, &Channel::getTargetName, &Channel::setTargetName);
    // A channel without a moment has no beginning.
    auto& moments = *channel.getOrCreateSampler()->getOrCreateKeyframeContainer();
    fields.list(moments.size(), [&](unsigned int i) {
        typename Channel::KeyframeContainerType::KeyType moment;
        if (fields.isWriting())
            moment = moments[i];
        double time = moment.getTime();
        auto value = moment.getValue();
        fields.plain(time);
        exchangeMoment(fields, value);
        moment.setTime(time);
        moment.setValue(value);
        if (fields.isMaking() && fields.isGood())
            moments.push_back(moment);
    });
}

const FlatKinds<animation::Channel>& channelKinds()
{
    using Base = animation::Channel;
    static const FlatKinds<Base> kinds = {flatKind<animation::DoubleStepChannel, Base, exchange>(),
                                          flatKind<animation::FloatStepChannel, Base, exchange>(),
                                          flatKind<animation::Vec2StepChannel, Base, exchange>(),
                                          flatKind<animation::Vec3StepChannel, Base, exchange>(),
                                          flatKind<animation::Vec4StepChannel, Base, exchange>(),
                                          flatKind<animation::QuatStepChannel, Base, exchange>(),
                                          flatKind<animation::DoubleLinearChannel, Base, exchange>(),
                                          flatKind<animation::FloatLinearChannel, Base, exchange>(),
                                          flatKind<animation::Vec2LinearChannel, Base, exchange>(),
                                          flatKind<animation::Vec3LinearChannel, Base, exchange>(),
                                          flatKind<animation::Vec4LinearChannel, Base, exchange>(),
                                          flatKind<animation::QuatSphericalLinearChannel, Base, exchange>(),
                                          flatKind<animation::MatrixLinearChannel, Base, exchange>(),
                                          flatKind<animation::FloatCubicBezierChannel, Base, exchange>(),
                                          flatKind<animation::DoubleCubicBezierChannel, Base, exchange>(),
                                          flatKind<animation::Vec2CubicBezierChannel, Base, exchange>(),
                                          flatKind<animation::Vec3CubicBezierChannel, Base, exchange>(),
                                          flatKind<animation::Vec4CubicBezierChannel, Base, exchange>()};
    return kinds;
}

void exchange(FlatFields& fields, animation::Animation& one)
{
    using A = animation::Animation;
    exchangeName(fields, one);
    exchangeParts(fields, channelKinds(), one.getChannels(),
                  [&one](const osg::ref_ptr<animation::Channel>& channel) {
                      // Animation::addChannel() would work the duration out anew.
                      if (channel->getSampler()->getKeyframeContainer()->size() > 0)
                          one.getChannels().push_back(channel);
                  });
    fields.value(one, &A::getDuration, &A::setDuration);
    fields.value(one, &A::getWeight, &A::setWeight);
    fields.value(one, &A::getStartTime, &A::setStartTime);
    fields.choice(one, &A::getPlayMode, &A::setPlayMode, FlatChoices<4>{A::LOOP, A::ONCE, A::STAY, A::PPONG});
}

const FlatKinds<animation::Animation>& animationKinds()
{
    static const FlatKinds<animation::Animation> kinds = {
        flatKind<animation::Animation, animation::Animation, exchange>()};
    return kinds;
}

void exchange(FlatFields& fields, animation::BasicAnimationManager& manager)
{
    exchangeName(fields, manager);
    fields.value(
        manager, [](const auto& from) { return from.getAutomaticLink(); },
        [](auto& to, bool isAutomatic) { to.setAutomaticLink(isAutomatic); });
    exchangeParts(fields, animationKinds(), manager.getAnimationList(),
                  [&manager](const osg::ref_ptr<animation::Animation>& one) {
                      manager.getAnimationList().push_back(one);
                  });
    if (fields.isMaking()) {
        manager.dirty();
        manager.buildTargetReference();
    }
}

void exchange(FlatFields& fields, animation::UpdateMatrixTransform& update)
{
    exchangeName(fields, update);
    exchangeParts(fields, elementKinds(), update.getStackedTransforms(),
                  [&update](const osg::ref_ptr<animation::StackedTransformElement>& element) {
                      update.getStackedTransforms().push_back(element);
                  });
}

void exchange(FlatFields& fields, animation::UpdateBone& update)
{
    exchange(fields, static_cast<animation::UpdateMatrixTransform&>(update));
}

void exchange(FlatFields& fields, animation::UpdateMorph& update)
{
    exchangeName(fields, update);
    fields.list(update.getNumTarget(), [&](unsigned int i) {
        fields.value(
            update, [i](animation::UpdateMorph& from) { return from.getTargetName(i); },
            &animation::UpdateMorph::addTarget);
    });
}

void exchange(FlatFields&, animation::Skeleton::UpdateSkeleton&) {}

void exchange(FlatFields&, animation::UpdateRigGeometry&) {}

void exchange(FlatFields&, animation::UpdateMorphGeometry&) {}

void exchangePath(FlatFields& fields, osg::AnimationPath& path)
{
    fields.choice(
        path, &osg::AnimationPath::getLoopMode, &osg::AnimationPath::setLoopMode,
        FlatChoices<3>{osg::AnimationPath::LOOP, osg::AnimationPath::SWING, osg::AnimationPath::NO_LOOPING});
    auto at = path.getTimeControlPointMap().begin();
    fields.list(path.getTimeControlPointMap().size(), [&](unsigned int) {
        double time = 0;
        osg::Vec3d position;
        osg::Quat rotation;
        osg::Vec3d scale;
        if (fields.isWriting()) {
            time = at->first;
            position = at->second.getPosition();
            rotation = at->second.getRotation();
            scale = at->second.getScale();
            ++at;
        }
        fields.plain(time);
        fields.plain(position);
        fields.plain(rotation);
        fields.plain(scale);
        if (fields.isMaking() && fields.isGood())
            path.insert(time, osg::AnimationPath::ControlPoint(position, rotation, scale));
    });
}

void exchange(FlatFields& fields, osg::AnimationPathCallback& update)
{
    using C = osg::AnimationPathCallback;
    exchangeName(fields, update);
    fields.value(update, &C::getPivotPoint, &C::setPivotPoint);
    fields.value(update, &C::getUseInverseMatrix, &C::setUseInverseMatrix);
    fields.value(update, &C::getTimeOffset, &C::setTimeOffset);
    fields.value(update, &C::getTimeMultiplier, &C::setTimeMultiplier);
    fields.value(update, &C::getPause, &C::setPause);
    bool hasPath = fields.isWriting() && update.getAnimationPath();
    fields.plain(hasPath);
    if (!hasPath)
        return;
    const osg::ref_ptr<osg::AnimationPath> path =
        fields.isWriting() ? update.getAnimationPath() : new osg::AnimationPath;
    exchangePath(fields, *path);
    if (fields.isMaking())
        update.setAnimationPath(path);
}

} // namespace

const FlatKinds<osg::Callback>& flatCallbacks()
{
    using Base = osg::Callback;
    static const FlatKinds<Base> kinds = {flatKind<osg::AnimationPathCallback, Base, exchange>(),
                                          flatKind<animation::BasicAnimationManager, Base, exchange>(),
                                          flatKind<animation::UpdateMatrixTransform, Base, exchange>(),
                                          flatKind<animation::UpdateBone, Base, exchange>(),
                                          flatKind<animation::UpdateMorph, Base, exchange>(),
                                          flatKind<animation::Skeleton::UpdateSkeleton, Base, exchange>(),
                                          flatKind<animation::UpdateRigGeometry, Base, exchange>(),
                                          flatKind<animation::UpdateMorphGeometry, Base, exchange>()};
    return kinds;
}

} // namespace vfFormats
