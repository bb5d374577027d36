// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/assimp/AssimpMaterials.h>

#include <velaforge/formats/ModelFiles.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/ImageFiles.h>
#include <velaforge/scene/Emission.h>
#include <velaforge/scene/Lights.h>

#include <osg/AlphaFunc>
#include <osg/BlendFunc>
#include <osg/CullFace>
#include <osg/Material>
#include <osg/Texture2D>
#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>
#include <osgDB/Registry>

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

namespace vfFormats {

namespace {

constexpr aiTextureType colorImages[] = {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE};

constexpr aiTextureType emissionImages[] = {aiTextureType_EMISSIVE, aiTextureType_EMISSION_COLOR};

/// Colours of materials have a name each in Assimp, of three parts.
osg::Vec4 colorOf(const aiMaterial& material, const char* key, unsigned int type, unsigned int index,
                  const osg::Vec4& otherwise)
{
    aiColor4D color;
    if (material.Get(key, type, index, color) != aiReturn_SUCCESS)
        return otherwise;
    const auto part = [](float value) { return std::clamp(value, 0.0f, 1.0f); };
    return {part(color.r), part(color.g), part(color.b), part(color.a)};
}

float numberOf(const aiMaterial& material, const char* key, unsigned int type, unsigned int index,
               float otherwise)
{
    float value = otherwise;
    return material.Get(key, type, index, value) == aiReturn_SUCCESS ? value : otherwise;
}

/// @return the first of these kinds of image that the material has, aiTextureType_NONE when there is none
template <std::size_t count>
aiTextureType imageOf(const aiMaterial& material, const aiTextureType (&kinds)[count])
{
    for (const aiTextureType kind : kinds) {
        if (material.GetTextureCount(kind) > 0)
            return kind;
    }
    return aiTextureType_NONE;
}

/// Meshes without a material have one of that name, whose grey is of no meaning.
bool isStandIn(const aiMaterial& material)
{
    aiString name;
    if (material.Get(AI_MATKEY_NAME, name) != aiReturn_SUCCESS ||
        std::strcmp(name.C_Str(), AI_DEFAULT_MATERIAL_NAME) != 0 ||
        imageOf(material, colorImages) != aiTextureType_NONE)
        return false;
    const osg::Vec4 color = colorOf(material, AI_MATKEY_COLOR_DIFFUSE, {0.6f, 0.6f, 0.6f, 1});
    const auto isGrey = [&color](float grey) {
        return std::abs(color.r() - grey) + std::abs(color.g() - grey) + std::abs(color.b() - grey) < 0.01f;
    };
    return isGrey(0.6f) || isGrey(0.8f);
}

/// Only this format says how alpha is meant, and only its colours are linear.
bool isGltf(const aiMaterial& material)
{
    aiString mode;
    return material.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == aiReturn_SUCCESS;
}

unsigned int channelOf(const aiMaterial& material, aiTextureType type)
{
    int channel = 0;
    if (type != aiTextureType_NONE && material.Get(AI_MATKEY_UVWSRC(type, 0), channel) == aiReturn_SUCCESS)
        return static_cast<unsigned int>(std::clamp(channel, 0, AI_MAX_NUMBER_OF_TEXTURECOORDS - 1));
    return 0;
}

/// Assimp keeps the transform of this format in the way in which its own step would take it, turned about the middle of the
/// picture. This takes it back.
TexturePlacement placementOf(const aiMaterial& material, aiTextureType type)
{
    TexturePlacement placement;
    placement.channel = channelOf(material, type);
    aiUVTransform transform;
    if (type == aiTextureType_NONE || !isGltf(material) ||
        material.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) != aiReturn_SUCCESS)
        return placement;
    const float c = std::cos(transform.mRotation);
    const float s = -std::sin(transform.mRotation);
    const aiVector2D& scale = transform.mScaling;
    placement.rotation = -transform.mRotation;
    placement.scale.set(scale.x, scale.y);
    placement.offset.set(transform.mTranslation.x - scale.x * (1 - c + s) / 2,
                         scale.y * (s + c - 1) / 2 + 1 - scale.y - transform.mTranslation.y);
    return placement;
}

bool isUnlit(const aiMaterial& material)
{
    int model = 0;
    return isGltf(material) && material.Get(AI_MATKEY_SHADING_MODEL, model) == aiReturn_SUCCESS &&
           model == aiShadingMode_Unlit;
}

osg::Texture::WrapMode wrapOf(aiTextureMapMode mode)
{
    switch (mode) {
    case aiTextureMapMode_Clamp:
    case aiTextureMapMode_Decal:
        return osg::Texture::CLAMP_TO_EDGE;
    case aiTextureMapMode_Mirror:
        return osg::Texture::MIRROR;
    default:
        return osg::Texture::REPEAT;
    }
}

std::string alphaModeOf(const aiMaterial& material)
{
    aiString mode;
    return material.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == aiReturn_SUCCESS ? mode.C_Str() : "";
}

void makeTransparent(osg::StateSet& state)
{
    state.setAttributeAndModes(
        new osg::BlendFunc(osg::BlendFunc::SRC_ALPHA, osg::BlendFunc::ONE_MINUS_SRC_ALPHA));
    state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
}

} // namespace

osg::Vec4 toSrgb(const osg::Vec4& linear)
{
    const auto part = [](float value) {
        return value <= 0.0031308f ? value * 12.92f : 1.055f * std::pow(value, 1 / 2.4f) - 0.055f;
    };
    return {part(linear.r()), part(linear.g()), part(linear.b()), linear.a()};
}

osg::Vec2 TexturePlacement::transformed(const osg::Vec2& place) const
{
    const float u = place.x() * scale.x();
    const float v = (1 - place.y()) * scale.y(); // the format counts downwards
    const float c = std::cos(rotation);
    const float s = std::sin(rotation);
    return {c * u + s * v + offset.x(), 1 - (c * v - s * u + offset.y())};
}

AssimpMaterials::AssimpMaterials(const aiScene& scene, const std::string& directory)
    : m_scene(scene), m_directory(directory), m_states(std::size_t(2) * scene.mNumMaterials)
{}

osg::StateSet* AssimpMaterials::find(unsigned int number, bool hasColors)
{
    if (number >= m_scene.mNumMaterials || isStandIn(*m_scene.mMaterials[number]))
        return nullptr;
    osg::ref_ptr<osg::StateSet>& state = m_states[std::size_t(2) * number + (hasColors ? 1 : 0)];
    if (!state)
        state = make(number, hasColors);
    return state;
}

MeshLook AssimpMaterials::lookOf(unsigned int number) const
{
    MeshLook look;
    if (number >= m_scene.mNumMaterials)
        return look;
    const aiMaterial& material = *m_scene.mMaterials[number];
    const aiTextureType emission = imageOf(material, emissionImages);
    look.base = placementOf(material, imageOf(material, colorImages));
    look.emission = placementOf(material, emission);
    look.hasEmission = emission != aiTextureType_NONE;
    look.isLinear = isGltf(material);
    if (look.isLinear) {
        look.colorFactor = colorOf(material, AI_MATKEY_COLOR_DIFFUSE, {1, 1, 1, 1});
        look.isOpaque = alphaModeOf(material) == "OPAQUE";
    }
    return look;
}

osg::ref_ptr<osg::StateSet> AssimpMaterials::make(unsigned int number, bool hasColors)
{
    const aiMaterial& material = *m_scene.mMaterials[number];
    const osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    aiString name;
    material.Get(AI_MATKEY_NAME, name);
    state->setName(name.C_Str());

    osg::Vec4 diffuse = colorOf(material, AI_MATKEY_COLOR_DIFFUSE, {0.8f, 0.8f, 0.8f, 1});
    const std::string alphaMode = alphaModeOf(material);
    float opacity = alphaMode.empty() ? numberOf(material, AI_MATKEY_OPACITY, 1) * diffuse.a() : diffuse.a();
    opacity = std::clamp(opacity, 0.0f, 1.0f);
    // Some programs write 0 for "nothing is transparent"; this format has a word for that.
    if ((opacity == 0 && alphaMode.empty()) || alphaMode == "OPAQUE")
        opacity = 1;
    bool isTransparent = opacity < 1;
    addTexture(*state, material, isTransparent);
    if (alphaMode == "OPAQUE" || alphaMode == "MASK")
        isTransparent = false;
    else if (alphaMode == "BLEND")
        isTransparent = true;
    if (alphaMode == "MASK")
        state->setAttributeAndModes(
            new osg::AlphaFunc(osg::AlphaFunc::GEQUAL, numberOf(material, AI_MATKEY_GLTF_ALPHACUTOFF, 0.5f)));

    constexpr auto both = osg::Material::FRONT_AND_BACK;
    const auto opaque = [opacity](osg::Vec4 color) {
        color.a() = opacity;
        return color;
    };
    diffuse = opaque(alphaMode.empty() ? diffuse : toSrgb(diffuse));
    const osg::ref_ptr<osg::Material> drawn = new osg::Material;
    drawn->setName(name.C_Str());
    drawn->setDiffuse(both, diffuse);
    drawn->setAmbient(both, diffuse); // what lies in the shade has the same colour
    drawn->setSpecular(both, opaque(colorOf(material, AI_MATKEY_COLOR_SPECULAR, {0, 0, 0, 1})));
    drawn->setEmission(both, opaque(addEmissionOf(*state, material)));
    drawn->setShininess(both, std::clamp(numberOf(material, AI_MATKEY_SHININESS, 0), 0.0f, 128.0f));
    drawn->setColorMode(hasColors ? osg::Material::AMBIENT_AND_DIFFUSE : osg::Material::OFF);
    state->setAttribute(drawn);
    if (isUnlit(material)) {
        drawn->setEmission(both, {0, 0, 0, opacity});
        vfScene::setSelfLit(*state);
    }
    if (isTransparent)
        makeTransparent(*state);
    return state;
}

osg::Vec4 AssimpMaterials::addEmissionOf(osg::StateSet& state, const aiMaterial& material)
{
    const bool isLinear = isGltf(material);
    osg::Vec4 color = colorOf(material, AI_MATKEY_COLOR_EMISSIVE, {0, 0, 0, 1});
    const float strength = numberOf(material, AI_MATKEY_EMISSIVE_INTENSITY, 1);
    for (int part = 0; part < 3; ++part)
        color[part] = std::clamp(color[part] * std::max(strength, 0.0f), 0.0f, 1.0f);
    if (isLinear)
        color = toSrgb(color);
    const osg::Vec4 nothing(0, 0, 0, 1);
    const aiTextureType type = imageOf(material, emissionImages);
    aiString name;
    if (type == aiTextureType_NONE || material.GetTexture(type, 0, &name) != aiReturn_SUCCESS) {
        // The texture of the surface would darken it.
        const bool isTextured = state.getTextureAttribute(0, osg::StateAttribute::TEXTURE) != nullptr;
        if (isTextured && vfScene::addEmission(state, nullptr, {color.r(), color.g(), color.b()}))
            return nothing;
        return color;
    }
    // In other formats the picture stands in the colour's place.
    osg::Vec3 factor(color.r(), color.g(), color.b());
    if (!isLinear && factor == osg::Vec3())
        factor.set(1, 1, 1);
    if (const osg::ref_ptr<osg::Image> image = readImage(name.C_Str()))
        vfScene::addEmission(state, image, factor);
    return nothing;
}

void AssimpMaterials::addTexture(osg::StateSet& state, const aiMaterial& material, bool& isTransparent)
{
    const aiTextureType type = imageOf(material, colorImages);
    aiString name;
    aiTextureMapMode modes[3] = {aiTextureMapMode_Wrap, aiTextureMapMode_Wrap, aiTextureMapMode_Wrap};
    if (type == aiTextureType_NONE ||
        material.GetTexture(type, 0, &name, nullptr, nullptr, nullptr, nullptr, modes) != aiReturn_SUCCESS)
        return;
    const osg::ref_ptr<osg::Image> image = readImage(name.C_Str());
    if (!image)
        return;
    const osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    texture->setWrap(osg::Texture::WRAP_S, wrapOf(modes[0]));
    texture->setWrap(osg::Texture::WRAP_T, wrapOf(modes[1]));
    texture->setResizeNonPowerOfTwoHint(false);
    state.setTextureAttributeAndModes(0, texture);
    isTransparent = isTransparent || image->isImageTranslucent();
}

osg::ref_ptr<osg::Image> AssimpMaterials::readImage(const std::string& name)
{
    if (name.empty())
        return nullptr;
    const auto [known, isNew] = m_images.try_emplace(name);
    if (!isNew)
        return known->second;
    if (const aiTexture* embedded = m_scene.GetEmbeddedTexture(name.c_str())) {
        known->second = decode(*embedded);
        return known->second;
    }
    known->second = readImageFile(name, m_directory);
    return known->second;
}

osg::ref_ptr<osg::Image> AssimpMaterials::decode(const aiTexture& texture)
{
    const std::string given = osgDB::getSimpleFileName(texture.mFilename.C_Str());
    const std::string name = given.empty() ? "an image within the file" : "the image \"" + given + "\"";
    if (texture.mHeight == 0) {
        // The bytes of an image file; its width is their number.
        const std::string contents(reinterpret_cast<const char*>(texture.pcData), texture.mWidth);
        std::string format = imageFormatOf(contents);
        if (format.empty())
            format = osgDB::convertToLowerCase(texture.achFormatHint);
        if (!isImageFile("image." + format)) {
            FileGate::noteFailure(name, "not a listed image format: " + format);
            return nullptr;
        }
        osgDB::ReaderWriter* reader = osgDB::Registry::instance()->getReaderWriterForExtension(format);
        std::istringstream bytes(contents);
        const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("dds_flip");
        const osg::ref_ptr<osg::Image> image =
            reader ? reader->readImage(bytes, options).takeImage() : nullptr;
        if (!image)
            FileGate::noteFailure(name, "the image cannot be decoded");
        return image;
    }
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(static_cast<int>(texture.mWidth), static_cast<int>(texture.mHeight), 1, GL_RGBA,
                         GL_UNSIGNED_BYTE);
    const aiTexel* texel = texture.pcData;
    for (unsigned int row = 0; row < texture.mHeight; ++row) {
        unsigned char* target = image->data(0, texture.mHeight - 1 - row);
        for (unsigned int column = 0; column < texture.mWidth; ++column, ++texel) {
            *target++ = texel->r;
            *target++ = texel->g;
            *target++ = texel->b;
            *target++ = texel->a;
        }
    }
    return image;
}

} // namespace vfFormats
