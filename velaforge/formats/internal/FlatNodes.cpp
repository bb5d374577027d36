// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatKinds.h>

#include <osg/AutoTransform>
#include <osg/Billboard>
#include <osg/CameraView>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/LOD>
#include <osg/Light>
#include <osg/LightSource>
#include <osg/MatrixTransform>
#include <osg/PositionAttitudeTransform>
#include <osg/Sequence>
#include <osg/ShapeDrawable>
#include <osg/Switch>
#include <osg/UserDataContainer>
#include <osg/ValueObject>
#include <osgAnimation/Bone>
#include <osgAnimation/MorphGeometry>
#include <osgAnimation/RigGeometry>
#include <osgAnimation/Skeleton>
#include <osgAnimation/UpdateBone>
#include <osgAnimation/UpdateMatrixTransform>
#include <osgText/Text>

#include <string>
#include <utility>

namespace vfFormats {

namespace {

/// @return the number of children
std::size_t exchangeChildren(FlatFields& fields, osg::Group& group)
{
    std::vector<osg::Node*> sent;
    for (unsigned int i = 0; fields.isWriting() && i < group.getNumChildren(); ++i) {
        if (group.getChild(i))
            sent.push_back(group.getChild(i));
    }
    const std::size_t count = fields.count(sent.size());
    for (std::size_t i = 0; i < count && fields.isGood(); ++i) {
        fields.member<osg::Node>(
            group, [&sent, i](const osg::Group&) { return sent[i]; },
            [](osg::Group& to, osg::Node* child) { to.addChild(child); });
    }
    return count;
}

void exchange(FlatFields& fields, osg::Group& group)
{
    exchangeChildren(fields, group);
}

void exchange(FlatFields& fields, osg::Geode& geode)
{
    exchangeChildren(fields, geode);
}

void exchangeFrame(FlatFields& fields, osg::Transform& transform)
{
    fields.choice(transform, &osg::Transform::getReferenceFrame, &osg::Transform::setReferenceFrame,
                  FlatChoices<3>{osg::Transform::RELATIVE_RF, osg::Transform::ABSOLUTE_RF,
                                 osg::Transform::ABSOLUTE_RF_INHERIT_VIEWPOINT});
    exchangeChildren(fields, transform);
}

void exchange(FlatFields& fields, osg::MatrixTransform& transform)
{
    fields.value(transform, &osg::MatrixTransform::getMatrix, &osg::MatrixTransform::setMatrix);
    exchangeFrame(fields, transform);
}

void exchange(FlatFields& fields, osgAnimation::Bone& bone)
{
    using B = osgAnimation::Bone;
    fields.value(bone, &B::getInvBindMatrixInSkeletonSpace, &B::setInvBindMatrixInSkeletonSpace);
    fields.value(bone, &B::getMatrixInSkeletonSpace, &B::setMatrixInSkeletonSpace);
    exchange(fields, static_cast<osg::MatrixTransform&>(bone));
}

void exchange(FlatFields& fields, osgAnimation::Skeleton& skeleton)
{
    exchange(fields, static_cast<osg::MatrixTransform&>(skeleton));
}

void exchange(FlatFields& fields, osg::PositionAttitudeTransform& transform)
{
    using T = osg::PositionAttitudeTransform;
    fields.value(transform, &T::getPosition, &T::setPosition);
    fields.value(transform, &T::getAttitude, &T::setAttitude);
    fields.value(transform, &T::getScale, &T::setScale);
    fields.value(transform, &T::getPivotPoint, &T::setPivotPoint);
    exchangeFrame(fields, transform);
}

void exchange(FlatFields& fields, osg::AutoTransform& transform)
{
    using T = osg::AutoTransform;
    fields.value(transform, &T::getPosition, &T::setPosition);
    fields.value(transform, &T::getRotation, &T::setRotation);
    fields.value(
        transform, [](const T& from) { return from.getScale(); },
        [](T& to, const osg::Vec3d& scale) { to.setScale(scale); });
    fields.value(transform, &T::getMinimumScale, &T::setMinimumScale);
    fields.value(transform, &T::getMaximumScale, &T::setMaximumScale);
    fields.value(transform, &T::getPivotPoint, &T::setPivotPoint);
    fields.value(transform, &T::getAxis, &T::setAxis);
    fields.value(transform, &T::getNormal, &T::setNormal);
    fields.choice(
        transform, &T::getAutoRotateMode, &T::setAutoRotateMode,
        FlatChoices<4>{T::NO_ROTATION, T::ROTATE_TO_SCREEN, T::ROTATE_TO_CAMERA, T::ROTATE_TO_AXIS});
    fields.value(transform, &T::getAutoScaleToScreen, &T::setAutoScaleToScreen);
    fields.value(transform, &T::getAutoScaleTransitionWidthRatio, &T::setAutoScaleTransitionWidthRatio);
    exchangeFrame(fields, transform);
}

void exchange(FlatFields& fields, osg::CameraView& view)
{
    using V = osg::CameraView;
    fields.value(view, &V::getPosition, &V::setPosition);
    fields.value(view, &V::getAttitude, &V::setAttitude);
    fields.value(view, &V::getFieldOfView, &V::setFieldOfView);
    fields.choice(view, &V::getFieldOfViewMode, &V::setFieldOfViewMode,
                  FlatChoices<3>{V::UNCONSTRAINED, V::HORIZONTAL, V::VERTICAL});
    fields.value(view, &V::getFocalLength, &V::setFocalLength);
    exchangeFrame(fields, view);
}

void exchange(FlatFields& fields, osg::Switch& choice)
{
    const std::size_t count = exchangeChildren(fields, choice);
    for (std::size_t i = 0; i < count && fields.isGood(); ++i) {
        const auto child = static_cast<unsigned int>(i);
        fields.value(
            choice, [child](const osg::Switch& from) { return from.getValue(child); },
            [child](osg::Switch& to, bool isOn) { to.setValue(child, isOn); });
    }
    fields.value(choice, &osg::Switch::getNewChildDefaultValue, &osg::Switch::setNewChildDefaultValue);
}

void exchange(FlatFields& fields, osg::LOD& levels)
{
    using L = osg::LOD;
    const std::size_t count = exchangeChildren(fields, levels);
    fields.list(
        levels.getNumRanges(),
        [&](unsigned int i) {
            fields.value(
                levels, [i](const L& from) { return osg::Vec2(from.getMinRange(i), from.getMaxRange(i)); },
                [i](L& to, const osg::Vec2& range) { to.setRange(i, range.x(), range.y()); });
        },
        count);
    fields.value(
        levels, [](const L& from) { return osg::Vec3d(from.getCenter()); },
        [](L& to, const osg::Vec3d& center) { to.setCenter(center); });
    fields.choice(levels, &L::getCenterMode, &L::setCenterMode,
                  FlatChoices<3>{L::USE_BOUNDING_SPHERE_CENTER, L::USER_DEFINED_CENTER,
                                 L::UNION_OF_BOUNDING_SPHERE_AND_USER_DEFINED});
    fields.value(levels, &L::getRadius, &L::setRadius);
    fields.choice(levels, &L::getRangeMode, &L::setRangeMode,
                  FlatChoices<2>{L::DISTANCE_FROM_EYE_POINT, L::PIXEL_SIZE_ON_SCREEN});
}

/// Returns a time or a speed with which a sequence goes on by a few children in a frame, at most.
double usable(double step)
{
    constexpr double least = 0.001;
    return step < 0 ? std::min(step, -least) : std::max(step, least);
}

void exchange(FlatFields& fields, osg::Sequence& sequence)
{
    using S = osg::Sequence;
    const auto count = static_cast<unsigned int>(exchangeChildren(fields, sequence));
    for (unsigned int i = 0; i < count && fields.isGood(); ++i) {
        fields.value(
            sequence, [i](const S& from) { return from.getTime(i); },
            [i](S& to, double time) { to.setTime(i, std::abs(usable(time))); });
    }
    fields.value(sequence, &S::getDefaultTime, &S::setDefaultTime);
    fields.value(sequence, &S::getLastFrameTime, &S::setLastFrameTime);
    fields.choice(sequence, &S::getLoopMode, &S::setLoopMode, FlatChoices<2>{S::LOOP, S::SWING});
    fields.range(sequence, &S::getBegin, &S::setBegin, -1, std::int64_t(count) - 1);
    fields.range(sequence, &S::getEnd, &S::setEnd, -1, std::int64_t(count) - 1);
    fields.value(
        sequence, [](const S& from) { return from.getSpeed(); },
        [](S& to, float speed) { to.setSpeed(static_cast<float>(usable(speed))); });
    fields.value(sequence, &S::getNumRepeats, &S::setNumRepeats);
    fields.value(sequence, &S::getSync, &S::setSync);
    fields.value(sequence, &S::getClearOnStop, &S::setClearOnStop);
    fields.choice(sequence, &S::getMode, &S::setMode, FlatChoices<4>{S::START, S::STOP, S::PAUSE, S::RESUME});
}

void exchange(FlatFields& fields, osg::Billboard& billboard)
{
    using B = osg::Billboard;
    const std::size_t count = exchangeChildren(fields, billboard);
    fields.choice(billboard, &B::getMode, &B::setMode,
                  FlatChoices<3>{B::POINT_ROT_EYE, B::POINT_ROT_WORLD, B::AXIAL_ROT});
    fields.value(billboard, &B::getAxis, &B::setAxis);
    fields.value(billboard, &B::getNormal, &B::setNormal);
    // There must be a place for each child.
    B::PositionList places = billboard.getPositionList();
    places.resize(count);
    for (osg::Vec3& place : places) {
        if (fields.isGood())
            fields.plain(place);
    }
    if (fields.isMaking())
        billboard.setPositionList(places);
}

void exchange(FlatFields& fields, osg::LightSource& source)
{
    fields.choice(source, &osg::LightSource::getReferenceFrame, &osg::LightSource::setReferenceFrame,
                  FlatChoices<2>{osg::LightSource::RELATIVE_RF, osg::LightSource::ABSOLUTE_RF});
    fields.reference<osg::Light>(
        source, [](const osg::LightSource& from) { return from.getLight(); },
        [](osg::LightSource& to, osg::Light* light) {
            if (light) // there is always one
                to.setLight(light);
        });
    exchangeChildren(fields, source);
}

/// @param points, normals  the arrays of the geometry, or what they are made of anew each frame
void exchangeArrays(FlatFields& fields, osg::Geometry& geometry, const osg::Array* points,
                    const osg::Array* normals)
{
    using G = osg::Geometry;
    fields.reference<osg::Array>(
        geometry, [points](const G&) { return points; },
        [](G& to, osg::Array* array) { to.setVertexArray(array); });
    fields.reference<osg::Array>(
        geometry, [normals](const G&) { return normals; },
        [](G& to, osg::Array* array) { to.setNormalArray(array); });
    fields.reference<osg::Array>(
        geometry, [](const G& from) { return from.getColorArray(); },
        [](G& to, osg::Array* array) { to.setColorArray(array); });
    fields.reference<osg::Array>(
        geometry, [](const G& from) { return from.getSecondaryColorArray(); },
        [](G& to, osg::Array* array) { to.setSecondaryColorArray(array); });
    fields.reference<osg::Array>(
        geometry, [](const G& from) { return from.getFogCoordArray(); },
        [](G& to, osg::Array* array) { to.setFogCoordArray(array); });
    fields.list(
        geometry.getNumTexCoordArrays(),
        [&](unsigned int unit) {
            fields.reference<osg::Array>(
                geometry, [unit](const G& from) { return from.getTexCoordArray(unit); },
                [unit](G& to, osg::Array* array) {
                    if (array)
                        to.setTexCoordArray(unit, array);
                });
        },
        mostTextureUnits);
    fields.list(
        geometry.getNumVertexAttribArrays(),
        [&](unsigned int index) {
            fields.reference<osg::Array>(
                geometry, [index](const G& from) { return from.getVertexAttribArray(index); },
                [index](G& to, osg::Array* array) {
                    if (array)
                        to.setVertexAttribArray(index, array);
                });
        },
        mostTextureUnits);
    fields.list(geometry.getNumPrimitiveSets(), [&](unsigned int i) {
        fields.reference<osg::PrimitiveSet>(
            geometry, [i](const G& from) { return from.getPrimitiveSet(i); },
            [](G& to, osg::PrimitiveSet* primitives) {
                if (primitives)
                    to.addPrimitiveSet(primitives);
            });
    });
}

void exchange(FlatFields& fields, osg::Geometry& geometry)
{
    if (fields.isWriting() && geometry.containsDeprecatedData())
        geometry.fixDeprecatedData();
    exchangeArrays(fields, geometry, geometry.getVertexArray(), geometry.getNormalArray());
}

void exchangeInfluence(FlatFields& fields, osgAnimation::VertexInfluence& influence)
{
    fields.value(influence, &osgAnimation::VertexInfluence::getName, &osgAnimation::VertexInfluence::setName);
    fields.list(influence.size(), [&](unsigned int i) {
        osgAnimation::VertexIndexWeight weight(0, 0);
        if (fields.isWriting())
            weight = influence[i];
        std::uint32_t index = weight.first;
        fields.plain(index);
        fields.plain(weight.second);
        weight.first = index;
        if (fields.isMaking() && fields.isGood())
            influence.push_back(weight);
    });
}

void exchange(FlatFields& fields, osgAnimation::RigGeometry& skin)
{
    exchange(fields, static_cast<osg::Geometry&>(skin));
    fields.reference<osg::Geometry>(
        skin, [](osgAnimation::RigGeometry& from) { return from.getSourceGeometry(); },
        [](osgAnimation::RigGeometry& to, osg::Geometry* source) { to.setSourceGeometry(source); });
    osgAnimation::VertexInfluenceMap* sent = skin.getInfluenceMap();
    bool hasMap = fields.isWriting() && sent;
    fields.plain(hasMap);
    if (!hasMap)
        return;
    const osg::ref_ptr<osgAnimation::VertexInfluenceMap> arrived = new osgAnimation::VertexInfluenceMap;
    auto at = fields.isWriting() ? sent->begin() : arrived->begin();
    fields.list(fields.isWriting() ? sent->size() : 0, [&](unsigned int) {
        std::string name = fields.isWriting() ? at->first : std::string();
        osgAnimation::VertexInfluence none;
        fields.plain(name);
        exchangeInfluence(fields, fields.isWriting()  ? at->second
                                  : fields.isMaking() ? (*arrived)[name]
                                                      : none);
        if (fields.isWriting())
            ++at;
    });
    if (fields.isMaking())
        skin.setInfluenceMap(arrived);
}

void exchange(FlatFields& fields, osgAnimation::MorphGeometry& shape)
{
    using S = osgAnimation::MorphGeometry;
    const auto either = [](const osg::Vec3Array* source, const osg::Array* shown) {
        return source && !source->empty() ? source : shown;
    };
    exchangeArrays(fields, shape, either(shape.getVertexSource(), shape.getVertexArray()),
                   either(shape.getNormalSource(), shape.getNormalArray()));
    fields.choice(shape, &S::getMethod, &S::setMethod, FlatChoices<2>{S::NORMALIZED, S::RELATIVE});
    fields.value(shape, &S::getMorphNormals, &S::setMorphNormals);
    fields.list(shape.getMorphTargetList().size(), [&](unsigned int i) {
        S::MorphTarget target(nullptr, 0);
        if (fields.isWriting())
            target = shape.getMorphTarget(i);
        fields.reference<osg::Geometry>(
            target, [](const S::MorphTarget& from) { return from.getGeometry(); },
            &S::MorphTarget::setGeometry);
        fields.value(target, &S::MorphTarget::getWeight, &S::MorphTarget::setWeight);
        if (fields.isMaking() && fields.isGood())
            shape.getMorphTargetList().push_back(target);
    });
}

void exchangeCharacters(FlatFields& fields, osgText::Text& text)
{
    constexpr std::size_t most = 10000;
    osgText::String characters = text.getText();
    fields.list(
        fields.isWriting() ? characters.size() : 0,
        [&](unsigned int i) {
            std::uint32_t character = fields.isWriting() ? characters[i] : 0;
            fields.plain(character);
            if (fields.isMaking())
                characters.push_back(character);
        },
        most);
    if (fields.isMaking())
        text.setText(characters);
}

/// A text is shown with the font that comes with the program: another one would be a file.
void exchange(FlatFields& fields, osgText::Text& text)
{
    using T = osgText::Text;
    const auto numbered = [](auto last) {
        FlatChoices<20> all = {};
        for (std::uint32_t i = 0; i < all.size(); ++i)
            all[i] = std::min(i, static_cast<std::uint32_t>(last));
        return all;
    };
    fields.value(text, &T::getColor, &T::setColor);
    fields.value(
        text,
        [](const T& from) { return osg::Vec2(from.getCharacterHeight(), from.getCharacterAspectRatio()); },
        [](T& to, const osg::Vec2& size) { to.setCharacterSize(size.x(), size.y()); });
    fields.choice(text, &T::getCharacterSizeMode, &T::setCharacterSizeMode,
                  numbered(T::OBJECT_COORDS_WITH_MAXIMUM_SCREEN_SIZE_CAPPED_BY_FONT_HEIGHT));
    fields.value(text, &T::getMaximumWidth, &T::setMaximumWidth);
    fields.value(text, &T::getMaximumHeight, &T::setMaximumHeight);
    fields.value(text, &T::getLineSpacing, &T::setLineSpacing);
    fields.value(text, &T::getPosition, &T::setPosition);
    fields.choice(text, &T::getAlignment, &T::setAlignment, numbered(T::RIGHT_BOTTOM_BASE_LINE));
    fields.value(text, &T::getRotation, &T::setRotation);
    fields.choice(text, &T::getAxisAlignment, &T::setAxisAlignment, numbered(T::USER_DEFINED_ROTATION));
    fields.value(text, &T::getAutoRotateToScreen, &T::setAutoRotateToScreen);
    fields.choice(text, &T::getLayout, &T::setLayout, numbered(T::VERTICAL));
    fields.range(text, &T::getDrawMode, &T::setDrawMode, 1, 15);
    fields.choice(text, &T::getBackdropType, &T::setBackdropType,
                  FlatChoices<10>{T::NONE, T::DROP_SHADOW_BOTTOM_RIGHT, T::DROP_SHADOW_CENTER_RIGHT,
                                  T::DROP_SHADOW_TOP_RIGHT, T::DROP_SHADOW_BOTTOM_CENTER,
                                  T::DROP_SHADOW_TOP_CENTER, T::DROP_SHADOW_BOTTOM_LEFT,
                                  T::DROP_SHADOW_CENTER_LEFT, T::DROP_SHADOW_TOP_LEFT, T::OUTLINE});
    fields.value(text, &T::getBackdropColor, &T::setBackdropColor);
    exchangeCharacters(fields, text);
}

/// A value that a program gave a node, by its type.
template <class Value>
bool exchangeValueOf(FlatFields& fields, osg::ref_ptr<osg::Object>& object)
{
    auto* sent = dynamic_cast<osg::TemplateValueObject<Value>*>(object.get());
    if (fields.isWriting() && !sent)
        return false;
    Value value = fields.isWriting() ? sent->getValue() : Value();
    fields.plain(value);
    if (!fields.isWriting())
        object = new osg::TemplateValueObject<Value>(std::string(), value);
    return true;
}

using ExchangeValue = bool (*)(FlatFields& fields, osg::ref_ptr<osg::Object>& object);

constexpr ExchangeValue valueTypes[] = {
    exchangeValueOf<bool>,       exchangeValueOf<int>,         exchangeValueOf<unsigned int>,
    exchangeValueOf<float>,      exchangeValueOf<double>,      exchangeValueOf<std::string>,
    exchangeValueOf<osg::Vec2f>, exchangeValueOf<osg::Vec3f>,  exchangeValueOf<osg::Vec4f>,
    exchangeValueOf<osg::Vec2d>, exchangeValueOf<osg::Vec3d>,  exchangeValueOf<osg::Vec4d>,
    exchangeValueOf<osg::Quat>,  exchangeValueOf<osg::Matrixd>};

/// @return the number of the type; that of types for another one
std::size_t valueTypeOf(const osg::Object* object)
{
    std::size_t type = 0;
    const auto is = [&](auto value) {
        const bool isIt = dynamic_cast<const osg::TemplateValueObject<decltype(value)>*>(object);
        type += !isIt;
        return isIt;
    };
    (void)(is(bool()) || is(int()) || is(0u) || is(0.0f) || is(0.0) || is(std::string()) ||
           is(osg::Vec2f()) || is(osg::Vec3f()) || is(osg::Vec4f()) || is(osg::Vec2d()) || is(osg::Vec3d()) ||
           is(osg::Vec4d()) || is(osg::Quat()) || is(osg::Matrixd()));
    return type;
}

void exchangeUserValues(FlatFields& fields, osg::Node& node)
{
    osg::UserDataContainer* sent = fields.isWriting() ? node.getUserDataContainer() : nullptr;
    fields.list(sent ? sent->getNumDescriptions() : 0, [&](unsigned int i) {
        fields.value(
            node, [sent, i](const osg::Node&) { return sent->getDescriptions()[i]; },
            [](osg::Node& to, const std::string& line) { to.addDescription(line); });
    });
    std::vector<osg::ref_ptr<osg::Object>> values;
    for (unsigned int i = 0; sent && i < sent->getNumUserObjects(); ++i) {
        if (valueTypeOf(sent->getUserObject(i)) < std::size(valueTypes))
            values.emplace_back(sent->getUserObject(i));
    }
    fields.list(values.size(), [&](unsigned int i) {
        osg::ref_ptr<osg::Object> object = fields.isWriting() ? values[i] : nullptr;
        std::string name = object ? object->getName() : std::string();
        auto type = static_cast<std::uint32_t>(object ? valueTypeOf(object) : 0);
        fields.plain(name);
        fields.plain(type);
        if (!fields.require(type < std::size(valueTypes)) || !valueTypes[type](fields, object) ||
            !fields.isMaking())
            return;
        object->setName(name);
        node.getOrCreateUserDataContainer()->addUserObject(object);
    });
}

/// @return whether all callbacks of a chain know what to do with a node of its class
bool fits(const osg::Callback* callback, const osg::Node& node)
{
    for (; callback; callback = callback->getNestedCallback()) {
        const bool isForBone = dynamic_cast<const osgAnimation::UpdateBone*>(callback);
        const bool isForTransform = dynamic_cast<const osgAnimation::UpdateMatrixTransform*>(callback);
        const bool isForSkeleton = dynamic_cast<const osgAnimation::Skeleton::UpdateSkeleton*>(callback);
        if ((isForBone && !dynamic_cast<const osgAnimation::Bone*>(&node)) ||
            (isForTransform && !dynamic_cast<const osg::MatrixTransform*>(&node)) ||
            (isForSkeleton && !dynamic_cast<const osgAnimation::Skeleton*>(&node)))
            return false;
    }
    return true;
}

} // namespace

void exchangeCommon(FlatFields& fields, osg::Node& node)
{
    exchangeObject(fields, node);
    // A text has a state of its own making, with the shader that draws its letters.
    const bool hasOwnState = dynamic_cast<const osgText::Text*>(&node) != nullptr;
    fields.reference<osg::StateSet>(
        node, [hasOwnState](const osg::Node& from) { return hasOwnState ? nullptr : from.getStateSet(); },
        [hasOwnState](osg::Node& to, osg::StateSet* state) {
            if (!hasOwnState)
                to.setStateSet(state);
        });
    fields.value(node, &osg::Node::getNodeMask, &osg::Node::setNodeMask);
    fields.value(node, &osg::Node::getCullingActive, &osg::Node::setCullingActive);
    fields.reference<osg::Callback>(
        node,
        [](const osg::Node& from) {
            const osg::Callback* callback = from.getUpdateCallback();
            return fits(callback, from) ? callback : nullptr;
        },
        [&fields](osg::Node& to, osg::Callback* callback) {
            if (fields.require(fits(callback, to)))
                to.setUpdateCallback(callback);
        });
    exchangeUserValues(fields, node);
}

const FlatKinds<osg::Node>& flatNodes()
{
    using Base = osg::Node;
    static const FlatKinds<Base> kinds = {flatKind<osg::Group, Base, exchange>(),
                                          flatKind<osg::Geode, Base, exchange>(),
                                          flatKind<osg::Geometry, Base, exchange>(),
                                          flatKind<osg::MatrixTransform, Base, exchange>(),
                                          flatKind<osg::PositionAttitudeTransform, Base, exchange>(),
                                          flatKind<osg::AutoTransform, Base, exchange>(),
                                          flatKind<osg::CameraView, Base, exchange>(),
                                          flatKind<osg::Switch, Base, exchange>(),
                                          flatKind<osg::LOD, Base, exchange>(),
                                          flatKind<osg::Sequence, Base, exchange>(),
                                          flatKind<osg::Billboard, Base, exchange>(),
                                          flatKind<osg::LightSource, Base, exchange>(),
                                          flatKind<osgText::Text, Base, exchange>(),
                                          flatKind<osgAnimation::Bone, Base, exchange>(),
                                          flatKind<osgAnimation::Skeleton, Base, exchange>(),
                                          flatKind<osgAnimation::RigGeometry, Base, exchange>(),
                                          flatKind<osgAnimation::MorphGeometry, Base, exchange>()};
    return kinds;
}

} // namespace vfFormats
