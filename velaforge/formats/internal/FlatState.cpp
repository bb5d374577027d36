// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/FlatKinds.h>

#include <osg/AlphaFunc>
#include <osg/BlendColor>
#include <osg/BlendEquation>
#include <osg/BlendFunc>
#include <osg/ColorMask>
#include <osg/CullFace>
#include <osg/Depth>
#include <osg/Fog>
#include <osg/FrontFace>
#include <osg/Light>
#include <osg/LightModel>
#include <osg/LineStipple>
#include <osg/LineWidth>
#include <osg/Material>
#include <osg/Point>
#include <osg/PolygonMode>
#include <osg/PolygonOffset>
#include <osg/ShadeModel>
#include <osg/TexEnv>
#include <osg/TexEnvCombine>
#include <osg/TexGen>
#include <osg/TexMat>
#include <osg/Texture1D>
#include <osg/Texture2D>
#include <osg/Texture3D>
#include <osg/TextureCubeMap>
#include <osg/TextureRectangle>

#include <string>
#include <unordered_map>
#include <utility>

namespace vfFormats {

namespace {

constexpr FlatChoices<8> comparisons = {GL_ALWAYS, GL_NEVER,   GL_LESS,     GL_EQUAL,
                                        GL_LEQUAL, GL_GREATER, GL_NOTEQUAL, GL_GEQUAL};

void exchange(FlatFields& fields, osg::AlphaFunc& alpha)
{
    fields.choice(
        alpha, &osg::AlphaFunc::getFunction, [](auto& to, auto function) { to.setFunction(function); },
        comparisons);
    fields.value(alpha, &osg::AlphaFunc::getReferenceValue, &osg::AlphaFunc::setReferenceValue);
}

void exchange(FlatFields& fields, osg::BlendColor& blend)
{
    fields.value(
        blend, [](const auto& from) { return from.getConstantColor(); },
        [](auto& to, const auto& color) { to.setConstantColor(color); });
}

void exchange(FlatFields& fields, osg::BlendEquation& blend)
{
    constexpr FlatChoices<7> equations = {osg::BlendEquation::FUNC_ADD,
                                          osg::BlendEquation::RGBA_MIN,
                                          osg::BlendEquation::RGBA_MAX,
                                          osg::BlendEquation::ALPHA_MIN,
                                          osg::BlendEquation::ALPHA_MAX,
                                          osg::BlendEquation::FUNC_SUBTRACT,
                                          osg::BlendEquation::FUNC_REVERSE_SUBTRACT};
    fields.choice(blend, &osg::BlendEquation::getEquationRGB, &osg::BlendEquation::setEquationRGB, equations);
    fields.choice(blend, &osg::BlendEquation::getEquationAlpha, &osg::BlendEquation::setEquationAlpha,
                  equations);
}

void exchange(FlatFields& fields, osg::BlendFunc& blend)
{
    constexpr FlatChoices<15> factors = {GL_ONE,
                                         GL_ZERO,
                                         GL_SRC_COLOR,
                                         GL_ONE_MINUS_SRC_COLOR,
                                         GL_DST_COLOR,
                                         GL_ONE_MINUS_DST_COLOR,
                                         GL_SRC_ALPHA,
                                         GL_ONE_MINUS_SRC_ALPHA,
                                         GL_DST_ALPHA,
                                         GL_ONE_MINUS_DST_ALPHA,
                                         GL_SRC_ALPHA_SATURATE,
                                         GL_CONSTANT_COLOR,
                                         GL_ONE_MINUS_CONSTANT_COLOR,
                                         GL_CONSTANT_ALPHA,
                                         GL_ONE_MINUS_CONSTANT_ALPHA};
    fields.choice(blend, &osg::BlendFunc::getSourceRGB, &osg::BlendFunc::setSourceRGB, factors);
    fields.choice(blend, &osg::BlendFunc::getDestinationRGB, &osg::BlendFunc::setDestinationRGB, factors);
    fields.choice(blend, &osg::BlendFunc::getSourceAlpha, &osg::BlendFunc::setSourceAlpha, factors);
    fields.choice(blend, &osg::BlendFunc::getDestinationAlpha, &osg::BlendFunc::setDestinationAlpha, factors);
}

void exchange(FlatFields& fields, osg::ColorMask& mask)
{
    fields.value(mask, &osg::ColorMask::getRedMask, &osg::ColorMask::setRedMask);
    fields.value(mask, &osg::ColorMask::getGreenMask, &osg::ColorMask::setGreenMask);
    fields.value(mask, &osg::ColorMask::getBlueMask, &osg::ColorMask::setBlueMask);
    fields.value(mask, &osg::ColorMask::getAlphaMask, &osg::ColorMask::setAlphaMask);
}

void exchange(FlatFields& fields, osg::CullFace& cull)
{
    fields.choice(cull, &osg::CullFace::getMode, &osg::CullFace::setMode,
                  FlatChoices<3>{GL_BACK, GL_FRONT, GL_FRONT_AND_BACK});
}

void exchange(FlatFields& fields, osg::Depth& depth)
{
    fields.choice(depth, &osg::Depth::getFunction, &osg::Depth::setFunction, comparisons);
    fields.value(depth, &osg::Depth::getZNear, &osg::Depth::setZNear);
    fields.value(depth, &osg::Depth::getZFar, &osg::Depth::setZFar);
    fields.value(depth, &osg::Depth::getWriteMask, &osg::Depth::setWriteMask);
}

void exchange(FlatFields& fields, osg::Fog& fog)
{
    fields.choice(fog, &osg::Fog::getMode, &osg::Fog::setMode, FlatChoices<3>{GL_EXP, GL_EXP2, GL_LINEAR});
    fields.value(fog, &osg::Fog::getDensity, &osg::Fog::setDensity);
    fields.value(fog, &osg::Fog::getStart, &osg::Fog::setStart);
    fields.value(fog, &osg::Fog::getEnd, &osg::Fog::setEnd);
    fields.value(fog, &osg::Fog::getColor, &osg::Fog::setColor);
    fields.value(fog, &osg::Fog::getUseRadialFog, &osg::Fog::setUseRadialFog);
    fields.choice(fog, &osg::Fog::getFogCoordinateSource, &osg::Fog::setFogCoordinateSource,
                  FlatChoices<2>{osg::Fog::FRAGMENT_DEPTH, osg::Fog::FOG_COORDINATE});
}

void exchange(FlatFields& fields, osg::FrontFace& front)
{
    fields.choice(front, &osg::FrontFace::getMode, &osg::FrontFace::setMode, FlatChoices<2>{GL_CCW, GL_CW});
}

void exchange(FlatFields& fields, osg::Light& light)
{
    fields.range(light, &osg::Light::getLightNum, &osg::Light::setLightNum, 0, 7);
    fields.value(light, &osg::Light::getAmbient, &osg::Light::setAmbient);
    fields.value(light, &osg::Light::getDiffuse, &osg::Light::setDiffuse);
    fields.value(light, &osg::Light::getSpecular, &osg::Light::setSpecular);
    fields.value(light, &osg::Light::getPosition, &osg::Light::setPosition);
    fields.value(light, &osg::Light::getDirection, &osg::Light::setDirection);
    fields.value(light, &osg::Light::getConstantAttenuation, &osg::Light::setConstantAttenuation);
    fields.value(light, &osg::Light::getLinearAttenuation, &osg::Light::setLinearAttenuation);
    fields.value(light, &osg::Light::getQuadraticAttenuation, &osg::Light::setQuadraticAttenuation);
    fields.value(light, &osg::Light::getSpotExponent, &osg::Light::setSpotExponent);
    fields.value(light, &osg::Light::getSpotCutoff, &osg::Light::setSpotCutoff);
}

void exchange(FlatFields& fields, osg::LightModel& model)
{
    fields.value(model, &osg::LightModel::getAmbientIntensity, &osg::LightModel::setAmbientIntensity);
    fields.choice(model, &osg::LightModel::getColorControl, &osg::LightModel::setColorControl,
                  FlatChoices<2>{osg::LightModel::SINGLE_COLOR, osg::LightModel::SEPARATE_SPECULAR_COLOR});
    fields.value(model, &osg::LightModel::getLocalViewer, &osg::LightModel::setLocalViewer);
    fields.value(model, &osg::LightModel::getTwoSided, &osg::LightModel::setTwoSided);
}

void exchange(FlatFields& fields, osg::LineStipple& stipple)
{
    fields.range(stipple, &osg::LineStipple::getFactor, &osg::LineStipple::setFactor, 1, 256);
    fields.value(stipple, &osg::LineStipple::getPattern, &osg::LineStipple::setPattern);
}

void exchange(FlatFields& fields, osg::LineWidth& line)
{
    fields.value(line, &osg::LineWidth::getWidth, &osg::LineWidth::setWidth);
}

void exchange(FlatFields& fields, osg::Material& material)
{
    fields.choice(material, &osg::Material::getColorMode, &osg::Material::setColorMode,
                  FlatChoices<6>{osg::Material::OFF, osg::Material::AMBIENT, osg::Material::DIFFUSE,
                                 osg::Material::SPECULAR, osg::Material::EMISSION,
                                 osg::Material::AMBIENT_AND_DIFFUSE});
    // A color that is set for both sides at once can be asked for both sides at once, too.
    const auto color = [&](auto isSame, auto get, auto set) {
        bool isForBoth = fields.isWriting() && (material.*isSame)();
        fields.plain(isForBoth);
        std::vector<osg::Material::Face> sides = {osg::Material::FRONT, osg::Material::BACK};
        if (isForBoth)
            sides = {osg::Material::FRONT_AND_BACK};
        for (const osg::Material::Face side : sides) {
            fields.value(
                material, [=](const osg::Material& from) { return (from.*get)(side); },
                [=](osg::Material& to, const auto& value) { (to.*set)(side, value); });
        }
    };
    using M = osg::Material;
    const auto set = [](void (M::*setter)(M::Face, const osg::Vec4&)) { return setter; };
    color(&M::getAmbientFrontAndBack, &M::getAmbient, set(&M::setAmbient));
    color(&M::getDiffuseFrontAndBack, &M::getDiffuse, set(&M::setDiffuse));
    color(&M::getSpecularFrontAndBack, &M::getSpecular, set(&M::setSpecular));
    color(&M::getEmissionFrontAndBack, &M::getEmission, set(&M::setEmission));
    color(&M::getShininessFrontAndBack, &M::getShininess, &M::setShininess);
}

void exchange(FlatFields& fields, osg::Point& point)
{
    fields.value(point, &osg::Point::getSize, &osg::Point::setSize);
    fields.value(point, &osg::Point::getFadeThresholdSize, &osg::Point::setFadeThresholdSize);
    fields.value(point, &osg::Point::getDistanceAttenuation, &osg::Point::setDistanceAttenuation);
    fields.value(point, &osg::Point::getMinSize, &osg::Point::setMinSize);
    fields.value(point, &osg::Point::getMaxSize, &osg::Point::setMaxSize);
}

void exchange(FlatFields& fields, osg::PolygonMode& polygons)
{
    for (const auto face : {osg::PolygonMode::FRONT, osg::PolygonMode::BACK}) {
        fields.choice(
            polygons, [face](const osg::PolygonMode& from) { return from.getMode(face); },
            [face](osg::PolygonMode& to, osg::PolygonMode::Mode mode) { to.setMode(face, mode); },
            FlatChoices<3>{GL_FILL, GL_LINE, GL_POINT});
    }
}

void exchange(FlatFields& fields, osg::PolygonOffset& offset)
{
    fields.value(offset, &osg::PolygonOffset::getFactor, &osg::PolygonOffset::setFactor);
    fields.value(offset, &osg::PolygonOffset::getUnits, &osg::PolygonOffset::setUnits);
}

void exchange(FlatFields& fields, osg::ShadeModel& shading)
{
    fields.choice(shading, &osg::ShadeModel::getMode, &osg::ShadeModel::setMode,
                  FlatChoices<2>{GL_SMOOTH, GL_FLAT});
}

void exchange(FlatFields& fields, osg::TexEnv& environment)
{
    fields.choice(environment, &osg::TexEnv::getMode, &osg::TexEnv::setMode,
                  FlatChoices<5>{GL_MODULATE, GL_DECAL, GL_BLEND, GL_REPLACE, GL_ADD});
    fields.value(
        environment, [](const osg::TexEnv& from) { return from.getColor(); }, &osg::TexEnv::setColor);
}

void exchange(FlatFields& fields, osg::TexEnvCombine& combine)
{
    using T = osg::TexEnvCombine;
    constexpr FlatChoices<8> functions = {T::MODULATE,    T::REPLACE,  T::ADD,      T::ADD_SIGNED,
                                          T::INTERPOLATE, T::SUBTRACT, T::DOT3_RGB, T::DOT3_RGBA};
    constexpr FlatChoices<12> sources = {T::PREVIOUS, T::TEXTURE,  T::CONSTANT, T::PRIMARY_COLOR,
                                         T::TEXTURE0, T::TEXTURE1, T::TEXTURE2, T::TEXTURE3,
                                         T::TEXTURE4, T::TEXTURE5, T::TEXTURE6, T::TEXTURE7};
    constexpr FlatChoices<4> operands = {T::SRC_COLOR, T::ONE_MINUS_SRC_COLOR, T::SRC_ALPHA,
                                         T::ONE_MINUS_SRC_ALPHA};
    fields.choice(combine, &T::getCombine_RGB, &T::setCombine_RGB, functions);
    fields.choice(combine, &T::getCombine_Alpha, &T::setCombine_Alpha, functions);
    fields.choice(combine, &T::getSource0_RGB, &T::setSource0_RGB, sources);
    fields.choice(combine, &T::getSource1_RGB, &T::setSource1_RGB, sources);
    fields.choice(combine, &T::getSource2_RGB, &T::setSource2_RGB, sources);
    fields.choice(combine, &T::getSource0_Alpha, &T::setSource0_Alpha, sources);
    fields.choice(combine, &T::getSource1_Alpha, &T::setSource1_Alpha, sources);
    fields.choice(combine, &T::getSource2_Alpha, &T::setSource2_Alpha, sources);
    fields.choice(combine, &T::getOperand0_RGB, &T::setOperand0_RGB, operands);
    fields.choice(combine, &T::getOperand1_RGB, &T::setOperand1_RGB, operands);
    fields.choice(combine, &T::getOperand2_RGB, &T::setOperand2_RGB, operands);
    fields.choice(combine, &T::getOperand0_Alpha, &T::setOperand0_Alpha, operands);
    fields.choice(combine, &T::getOperand1_Alpha, &T::setOperand1_Alpha, operands);
    fields.choice(combine, &T::getOperand2_Alpha, &T::setOperand2_Alpha, operands);
    fields.value(combine, &T::getScale_RGB, &T::setScale_RGB);
    fields.value(combine, &T::getScale_Alpha, &T::setScale_Alpha);
    fields.value(combine, &T::getConstantColor, &T::setConstantColor);
}

void exchange(FlatFields& fields, osg::TexGen& coordinates)
{
    using T = osg::TexGen;
    fields.choice(
        coordinates, &T::getMode, &T::setMode,
        FlatChoices<5>{T::OBJECT_LINEAR, T::EYE_LINEAR, T::SPHERE_MAP, T::NORMAL_MAP, T::REFLECTION_MAP});
    for (const auto axis : {T::S, T::T, T::R, T::Q}) {
        fields.value(
            coordinates, [axis](const T& from) { return from.getPlane(axis); },
            [axis](T& to, const osg::Plane& plane) { to.setPlane(axis, plane); });
    }
}

void exchange(FlatFields& fields, osg::TexMat& transform)
{
    fields.value(
        transform, [](const osg::TexMat& from) { return from.getMatrix(); }, &osg::TexMat::setMatrix);
    fields.value(transform, &osg::TexMat::getScaleByTextureRectangleSize,
                 &osg::TexMat::setScaleByTextureRectangleSize);
}

void exchangeTexture(FlatFields& fields, osg::Texture& texture)
{
    using T = osg::Texture;
    for (const auto axis : {T::WRAP_S, T::WRAP_T, T::WRAP_R}) {
        fields.choice(
            texture, [axis](const T& from) { return from.getWrap(axis); },
            [axis](T& to, T::WrapMode mode) { to.setWrap(axis, mode); },
            FlatChoices<5>{T::REPEAT, T::CLAMP, T::CLAMP_TO_EDGE, T::CLAMP_TO_BORDER, T::MIRROR});
    }
    for (const auto filter : {T::MIN_FILTER, T::MAG_FILTER}) {
        fields.choice(
            texture, [filter](const T& from) { return from.getFilter(filter); },
            [filter](T& to, T::FilterMode mode) { to.setFilter(filter, mode); },
            FlatChoices<6>{T::LINEAR, T::LINEAR_MIPMAP_LINEAR, T::LINEAR_MIPMAP_NEAREST, T::NEAREST,
                           T::NEAREST_MIPMAP_LINEAR, T::NEAREST_MIPMAP_NEAREST});
    }
    fields.value(texture, &T::getBorderColor, &T::setBorderColor);
    fields.value(texture, &T::getMaxAnisotropy, &T::setMaxAnisotropy);
    fields.value(texture, &T::getUseHardwareMipMapGeneration, &T::setUseHardwareMipMapGeneration);
    fields.value(texture, &T::getUnRefImageDataAfterApply, &T::setUnRefImageDataAfterApply);
    fields.value(texture, &T::getResizeNonPowerOfTwoHint, &T::setResizeNonPowerOfTwoHint);
    fields.choice(texture, &T::getInternalFormatMode, &T::setInternalFormatMode,
                  FlatChoices<6>{T::USE_IMAGE_DATA_FORMAT, T::USE_ARB_COMPRESSION,
                                 T::USE_S3TC_DXT1_COMPRESSION, T::USE_S3TC_DXT3_COMPRESSION,
                                 T::USE_S3TC_DXT5_COMPRESSION, T::USE_USER_DEFINED_FORMAT});
    fields.range(
        texture,
        [](const T& from) {
            return from.getInternalFormatMode() == T::USE_USER_DEFINED_FORMAT ? from.getInternalFormat() : 0;
        },
        [](T& to, int format) {
            if (format != 0)
                to.setInternalFormat(format);
        },
        0, 0xffff);
}

/// A texture of one image.
template <class Texture>
void exchangePlain(FlatFields& fields, Texture& texture)
{
    exchangeTexture(fields, texture);
    fields.reference<osg::Image>(
        texture, [](const Texture& from) { return from.getImage(); },
        [](Texture& to, osg::Image* image) { to.setImage(image); });
}

void exchange(FlatFields& fields, osg::Texture1D& texture)
{
    exchangePlain(fields, texture);
}

void exchange(FlatFields& fields, osg::Texture2D& texture)
{
    exchangePlain(fields, texture);
}

void exchange(FlatFields& fields, osg::Texture3D& texture)
{
    exchangePlain(fields, texture);
}

void exchange(FlatFields& fields, osg::TextureRectangle& texture)
{
    exchangePlain(fields, texture);
}

void exchange(FlatFields& fields, osg::TextureCubeMap& texture)
{
    exchangeTexture(fields, texture);
    for (unsigned int face = 0; face < 6; ++face) {
        fields.reference<osg::Image>(
            texture, [face](const osg::TextureCubeMap& from) { return from.getImage(face); },
            [face](osg::TextureCubeMap& to, osg::Image* image) { to.setImage(face, image); });
    }
}

constexpr std::int64_t mostOverride = 15; // all flags of osg::StateAttribute::Values

void exchangeModes(FlatFields& fields, osg::StateSet::ModeList& modes)
{
    auto at = modes.begin();
    fields.list(modes.size(), [&](unsigned int) {
        std::uint32_t mode = at != modes.end() ? at->first : 0;
        std::uint32_t value = at != modes.end() ? at->second : 0;
        fields.plain(mode);
        fields.plain(value);
        if (!fields.isWriting() && fields.require(mode <= 0xffff && value <= mostOverride) &&
            fields.isMaking())
            modes[mode] = value;
        else if (fields.isWriting())
            ++at;
    });
}

/// @param put  (attribute, override value) takes one
template <class Put>
void exchangeAttributes(FlatFields& fields, osg::StateSet::AttributeList& attributes, Put put)
{
    std::vector<osg::StateSet::RefAttributePair> sent;
    for (const auto& [type, attribute] : attributes) {
        if (fields.isWriting() && flatKindOf(*attribute.first) < flatAttributes().size())
            sent.push_back(attribute);
    }
    fields.list(sent.size(), [&](unsigned int i) {
        osg::StateSet::RefAttributePair attribute =
            fields.isWriting() ? sent[i] : osg::StateSet::RefAttributePair();
        fields.member<osg::StateAttribute>(
            attribute, [](const auto& from) { return from.first.get(); },
            [](auto& to, osg::StateAttribute* arrived) { to.first = arrived; });
        fields.range(
            attribute, [](const auto& from) { return from.second; },
            [](auto& to, unsigned int value) { to.second = value; }, 0, mostOverride);
        if (fields.isMaking() && fields.isGood())
            put(attribute.first.get(), attribute.second);
    });
}

} // namespace

void exchangeCommon(FlatFields& fields, osg::StateAttribute& attribute)
{
    exchangeObject(fields, attribute);
}

const FlatKinds<osg::StateAttribute>& flatAttributes()
{
    using Base = osg::StateAttribute;
    static const FlatKinds<Base> kinds = {
        flatKind<osg::AlphaFunc, Base, exchange>(),       flatKind<osg::BlendColor, Base, exchange>(),
        flatKind<osg::BlendEquation, Base, exchange>(),   flatKind<osg::BlendFunc, Base, exchange>(),
        flatKind<osg::ColorMask, Base, exchange>(),       flatKind<osg::CullFace, Base, exchange>(),
        flatKind<osg::Depth, Base, exchange>(),           flatKind<osg::Fog, Base, exchange>(),
        flatKind<osg::FrontFace, Base, exchange>(),       flatKind<osg::Light, Base, exchange>(),
        flatKind<osg::LightModel, Base, exchange>(),      flatKind<osg::LineStipple, Base, exchange>(),
        flatKind<osg::LineWidth, Base, exchange>(),       flatKind<osg::Material, Base, exchange>(),
        flatKind<osg::Point, Base, exchange>(),           flatKind<osg::PolygonMode, Base, exchange>(),
        flatKind<osg::PolygonOffset, Base, exchange>(),   flatKind<osg::ShadeModel, Base, exchange>(),
        flatKind<osg::TexEnv, Base, exchange>(),          flatKind<osg::TexEnvCombine, Base, exchange>(),
        flatKind<osg::TexGen, Base, exchange>(),          flatKind<osg::TexMat, Base, exchange>(),
        flatKind<osg::Texture1D, Base, exchange>(),       flatKind<osg::Texture2D, Base, exchange>(),
        flatKind<osg::Texture3D, Base, exchange>(),       flatKind<osg::TextureCubeMap, Base, exchange>(),
        flatKind<osg::TextureRectangle, Base, exchange>()};
    return kinds;
}

void exchange(FlatFields& fields, osg::StateSet& state)
{
    constexpr FlatChoices<4> binModes = {
        osg::StateSet::INHERIT_RENDERBIN_DETAILS, osg::StateSet::USE_RENDERBIN_DETAILS,
        osg::StateSet::OVERRIDE_RENDERBIN_DETAILS,
        osg::StateSet::RenderBinMode(osg::StateSet::USE_RENDERBIN_DETAILS |
                                     osg::StateSet::PROTECTED_RENDERBIN_DETAILS)};
    exchangeObject(fields, state);
    fields.choice(state, &osg::StateSet::getRenderingHint, &osg::StateSet::setRenderingHint,
                  FlatChoices<3>{osg::StateSet::DEFAULT_BIN, osg::StateSet::OPAQUE_BIN,
                                 osg::StateSet::TRANSPARENT_BIN});
    fields.choice(state, &osg::StateSet::getRenderBinMode, &osg::StateSet::setRenderBinMode, binModes);
    fields.value(state, &osg::StateSet::getBinNumber, &osg::StateSet::setBinNumber);
    const std::vector<std::string> bins = {"", "RenderBin", "DepthSortedBin", "StateSortedBin",
                                           "TraversalOrderBin"};
    fields.choice(
        state,
        [&bins](const auto& from) {
            return static_cast<std::uint32_t>(std::find(bins.begin(), bins.end(), from.getBinName()) -
                                              bins.begin());
        },
        [&bins](auto& to, std::uint32_t bin) { to.setBinName(bins[bin]); }, FlatChoices<5>{0, 1, 2, 3, 4});
    fields.value(state, &osg::StateSet::getNestRenderBins, &osg::StateSet::setNestRenderBins);
    exchangeModes(fields, state.getModeList());
    exchangeAttributes(fields, state.getAttributeList(),
                       [&state](osg::StateAttribute* attribute, unsigned int value) {
                           if (!attribute->isTextureAttribute())
                               state.setAttribute(attribute, value);
                       });
    osg::StateSet::TextureModeList& modes = state.getTextureModeList();
    fields.list(
        modes.size(),
        [&](unsigned int unit) {
            osg::StateSet::ModeList none;
            if (fields.isMaking() && modes.size() <= unit)
                modes.resize(unit + 1);
            exchangeModes(fields, unit < modes.size() ? modes[unit] : none);
        },
        mostTextureUnits);
    osg::StateSet::TextureAttributeList& attributes = state.getTextureAttributeList();
    fields.list(
        attributes.size(),
        [&](unsigned int unit) {
            osg::StateSet::AttributeList none;
            exchangeAttributes(fields, unit < attributes.size() ? attributes[unit] : none,
                               [&state, unit](osg::StateAttribute* attribute, unsigned int value) {
                                   if (attribute->isTextureAttribute())
                                       state.setTextureAttribute(unit, attribute, value);
                               });
        },
        mostTextureUnits);
}

} // namespace vfFormats
