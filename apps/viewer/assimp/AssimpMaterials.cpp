// SPDX-License-Identifier: MIT
#include "assimp/AssimpMaterials.h"

#include "reading/FileGate.h"

#include <osg/AlphaFunc>
#include <osg/BlendFunc>
#include <osg/CullFace>
#include <osg/Material>
#include <osg/Texture2D>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>
#include <osgDB/ReadFile>
#include <osgDB/Registry>

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>
#include <assimp/scene.h>

#include <algorithm>
#include <sstream>

namespace vfViewer {

namespace {

constexpr aiTextureType colorImages[] = {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE};

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

/// @return the kind of image that gives the colour, aiTextureType_NONE when there is none
aiTextureType colorImageOf(const aiMaterial& material)
{
    for (const aiTextureType type : colorImages) {
        if (material.GetTextureCount(type) > 0)
            return type;
    }
    return aiTextureType_NONE;
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

AssimpMaterials::AssimpMaterials(const aiScene& scene, const std::string& directory)
    : m_scene(scene), m_directory(directory), m_states(scene.mNumMaterials)
{}

osg::StateSet* AssimpMaterials::find(unsigned int number)
{
    if (number >= m_states.size())
        return nullptr;
    if (!m_states[number])
        m_states[number] = make(*m_scene.mMaterials[number]);
    return m_states[number];
}

unsigned int AssimpMaterials::textureChannel(unsigned int number) const
{
    if (number >= m_scene.mNumMaterials)
        return 0;
    const aiMaterial& material = *m_scene.mMaterials[number];
    const aiTextureType type = colorImageOf(material);
    int channel = 0;
    if (type != aiTextureType_NONE && material.Get(AI_MATKEY_UVWSRC(type, 0), channel) == aiReturn_SUCCESS)
        return static_cast<unsigned int>(std::clamp(channel, 0, AI_MAX_NUMBER_OF_TEXTURECOORDS - 1));
    return 0;
}

osg::ref_ptr<osg::StateSet> AssimpMaterials::make(const aiMaterial& material)
{
    const osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    aiString name;
    material.Get(AI_MATKEY_NAME, name);
    state->setName(name.C_Str());

    osg::Vec4 diffuse = colorOf(material, AI_MATKEY_COLOR_DIFFUSE, {0.8f, 0.8f, 0.8f, 1});
    const std::string alphaMode = alphaModeOf(material);
    float opacity = std::clamp(numberOf(material, AI_MATKEY_OPACITY, 1) * diffuse.a(), 0.0f, 1.0f);
    // What is not there at all was meant to be; some programs write 0 for "nothing is transparent".
    if (opacity == 0 || alphaMode == "OPAQUE")
        opacity = 1;
    bool isTransparent = opacity < 1;
    addTexture(*state, material, isTransparent);
    if (alphaMode == "OPAQUE" || alphaMode == "MASK")
        isTransparent = false;
    if (alphaMode == "MASK")
        state->setAttributeAndModes(
            new osg::AlphaFunc(osg::AlphaFunc::GEQUAL, numberOf(material, AI_MATKEY_GLTF_ALPHACUTOFF, 0.5f)));

    constexpr auto both = osg::Material::FRONT_AND_BACK;
    const auto opaque = [opacity](osg::Vec4 color) {
        color.a() = opacity;
        return color;
    };
    diffuse = opaque(diffuse);
    const osg::ref_ptr<osg::Material> drawn = new osg::Material;
    drawn->setName(name.C_Str());
    drawn->setDiffuse(both, diffuse);
    drawn->setAmbient(both, diffuse); // what lies in the shade has the same colour
    drawn->setSpecular(both, opaque(colorOf(material, AI_MATKEY_COLOR_SPECULAR, {0, 0, 0, 1})));
    drawn->setEmission(both, opaque(colorOf(material, AI_MATKEY_COLOR_EMISSIVE, {0, 0, 0, 1})));
    drawn->setShininess(both, std::clamp(numberOf(material, AI_MATKEY_SHININESS, 0), 0.0f, 128.0f));
    drawn->setColorMode(osg::Material::OFF);
    state->setAttribute(drawn);
    if (isTransparent)
        makeTransparent(*state);
    return state;
}

void AssimpMaterials::addTexture(osg::StateSet& state, const aiMaterial& material, bool& isTransparent)
{
    const aiTextureType type = colorImageOf(material);
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
    std::string path = name;
    std::replace(path.begin(), path.end(), '\\', '/');
    const std::string beside = m_directory + "/" + osgDB::getSimpleFileName(path);
    if (!osgDB::isAbsolutePath(path))
        path = m_directory + "/" + path;
    if (!osgDB::fileExists(path) && osgDB::fileExists(beside))
        path = beside;
    known->second = osgDB::readRefImageFile(path);
    return known->second;
}

osg::ref_ptr<osg::Image> AssimpMaterials::decode(const aiTexture& texture)
{
    if (texture.mHeight == 0) {
        // The bytes of an image file; its width is their number.
        const std::string format = osgDB::convertToLowerCase(texture.achFormatHint);
        if (!FileGate::isImage("image." + format)) {
            FileGate::noteFailure("an image within the file", "not a listed image format: " + format);
            return nullptr;
        }
        osgDB::ReaderWriter* reader = osgDB::Registry::instance()->getReaderWriterForExtension(format);
        std::istringstream bytes(std::string(reinterpret_cast<const char*>(texture.pcData), texture.mWidth));
        const osg::ref_ptr<osg::Image> image = reader ? reader->readImage(bytes).takeImage() : nullptr;
        if (!image)
            FileGate::noteFailure("an image within the file", "it cannot be read");
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

} // namespace vfViewer
