// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/ObjMaterials.h>

#include <velaforge/formats/internal/PlainText.h>
#include <velaforge/formats/internal/TextScanner.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/ImageFiles.h>
#include <velaforge/formats/readers/MappedFile.h>
#include <velaforge/formats/readers/SideFiles.h>
#include <velaforge/scene/Emission.h>

#include <osg/BlendFunc>
#include <osg/Material>
#include <osg/TexEnv>
#include <osg/TexMat>
#include <osg/Texture2D>
#include <osgDB/FileNameUtils>

#include <algorithm>
#include <sstream>

namespace vfFormats {

namespace {

/// The highest shininess in the format, and in OpenGL.
constexpr float highestExponent = 1000;
constexpr float highestShininess = 128;

/// An image and how it lies on the surface.
struct Map
{
    std::string file;
    osg::Vec3 scale{1, 1, 1};
    osg::Vec3 offset;
    bool isClamped = false;
};

struct Description
{
    std::string name;
    osg::Vec3 ambient{0.2f, 0.2f, 0.2f};
    osg::Vec3 diffuse{0.8f, 0.8f, 0.8f};
    osg::Vec3 specular;
    osg::Vec3 emission;
    float exponent = 0;
    float opacity = 1;
    bool hasDiffuse = false;
    bool hasOpacity = false; ///< from the word that says it without a doubt
    Map image;
    Map opacityImage;
    Map emissionImage;
};

osg::Vec3 takeColor(TextScanner& scanner)
{
    osg::Vec3 color;
    if (!scanner.number(color[0]))
        return color;
    if (!scanner.number(color[1]))
        return {color[0], color[0], color[0]}; // one number is for all three
    scanner.number(color[2]);
    for (int i = 0; i < 3; ++i)
        color[i] = std::clamp(color[i], 0.0f, 1.0f);
    return color;
}

/// Up to three numbers; what is left out stays as it is.
void takeVector(TextScanner& scanner, osg::Vec3& vector)
{
    for (int i = 0; i < 3 && scanner.number(vector[i]); ++i) {
    }
}

Map takeMap(TextScanner& scanner)
{
    Map map;
    while (scanner.hasWord()) {
        TextScanner ahead = scanner;
        const std::string_view option = ahead.word();
        if (option.size() < 2 || option.front() != '-')
            break;
        if (option == "-s") {
            takeVector(ahead, map.scale);
        } else if (option == "-o") {
            takeVector(ahead, map.offset);
        } else if (option == "-t") {
            osg::Vec3 turbulence;
            takeVector(ahead, turbulence);
        } else if (option == "-mm") {
            float number = 0;
            while (ahead.number(number)) {
            }
        } else if (option == "-clamp") {
            map.isClamped = ahead.word() == "on";
        } else {
            ahead.word(); // each of the others has one
        }
        scanner = ahead;
    }
    map.file = scanner.rest();
    std::replace(map.file.begin(), map.file.end(), '\\', '/');
    return map;
}

/// Takes one line of a material.
void takeLine(TextScanner& scanner, std::string_view given, Description& material)
{
    const std::string word = osgDB::convertToLowerCase(std::string(given));
    if (word == "ka") {
        material.ambient = takeColor(scanner);
    } else if (word == "kd") {
        material.diffuse = takeColor(scanner);
        material.hasDiffuse = true;
    } else if (word == "ks") {
        material.specular = takeColor(scanner);
    } else if (word == "ke") {
        material.emission = takeColor(scanner);
    } else if (word == "ns") {
        scanner.number(material.exponent);
    } else if (word == "d") {
        TextScanner ahead = scanner;
        if (ahead.word() == "-halo")
            scanner = ahead;
        scanner.number(material.opacity);
        material.hasOpacity = true;
    } else if (word == "tr") {
        float transparency = 0;
        scanner.number(transparency);
        if (!material.hasOpacity)
            material.opacity = 1 - transparency;
    } else if (word == "map_kd" || (word == "map_ka" && material.image.file.empty())) {
        material.image = takeMap(scanner);
    } else if (word == "map_d") {
        material.opacityImage = takeMap(scanner);
    } else if (word == "map_ke") {
        material.emissionImage = takeMap(scanner);
    }
}

/// @param color  null for white
/// @return the image with the brightness of another for its opacity
osg::ref_ptr<osg::Image> withOpacity(const osg::Image* color, const osg::Image& opacity)
{
    const osg::Image& shape = color ? *color : opacity;
    const bool isInAlpha = opacity.isImageTranslucent();
    osg::ref_ptr<osg::Image> both = new osg::Image;
    both->allocateImage(shape.s(), shape.t(), 1, GL_RGBA, GL_UNSIGNED_BYTE);
    for (int t = 0; t < shape.t(); ++t) {
        for (int s = 0; s < shape.s(); ++s) {
            const osg::Vec4 there = opacity.getColor(
                static_cast<unsigned int>(static_cast<long long>(s) * opacity.s() / shape.s()),
                static_cast<unsigned int>(static_cast<long long>(t) * opacity.t() / shape.t()));
            osg::Vec4 pixel =
                color ? color->getColor(static_cast<unsigned int>(s), static_cast<unsigned int>(t))
                      : osg::Vec4(1, 1, 1, 1);
            pixel.a() = isInAlpha ? there.a() : there.r();
            both->setColor(pixel, static_cast<unsigned int>(s), static_cast<unsigned int>(t));
        }
    }
    return both;
}

osg::ref_ptr<osg::Texture2D> makeTexture(const Map& map, const osg::ref_ptr<osg::Image>& image)
{
    osg::ref_ptr<osg::Texture2D> texture = new osg::Texture2D(image);
    const osg::Texture::WrapMode wrap = map.isClamped ? osg::Texture::CLAMP_TO_EDGE : osg::Texture::REPEAT;
    texture->setWrap(osg::Texture::WRAP_S, wrap);
    texture->setWrap(osg::Texture::WRAP_T, wrap);
    texture->setResizeNonPowerOfTwoHint(false);
    return texture;
}

void placeTexture(osg::StateSet& state, const Map& map)
{
    if (map.scale == osg::Vec3(1, 1, 1) && map.offset == osg::Vec3())
        return;
    state.setTextureAttributeAndModes(
        0, new osg::TexMat(osg::Matrix::scale(map.scale) * osg::Matrix::translate(map.offset)));
}

/// @return what the surface emits everywhere
osg::Vec3 addEmissionOf(osg::StateSet& state, const Description& description, const std::string& directory)
{
    const osg::Vec3 color = description.emission;
    if (description.emissionImage.file.empty()) {
        // The texture of the surface would darken it.
        const bool isTextured = state.getTextureAttribute(0, osg::StateAttribute::TEXTURE) != nullptr;
        return isTextured && vfScene::addEmission(state, nullptr, color) ? osg::Vec3() : color;
    }
    const osg::ref_ptr<osg::Image> image = readImageFile(description.emissionImage.file, directory);
    if (image)
        vfScene::addEmission(state, image, color == osg::Vec3() ? osg::Vec3(1, 1, 1) : color);
    return {};
}

osg::ref_ptr<osg::StateSet> makeState(const Description& description, const std::string& directory)
{
    const osg::ref_ptr<osg::StateSet> state = new osg::StateSet;
    state->setName(description.name);
    float opacity = std::clamp(description.opacity, 0.0f, 1.0f);
    // Nothing would be seen; some programs mean the opposite, or write 0 for "nothing is transparent".
    if (opacity == 0)
        opacity = 1;
    bool isTransparent = opacity < 1;

    osg::Vec3 diffuse = description.diffuse;
    osg::ref_ptr<osg::Image> image = readImageFile(description.image.file, directory);
    // A black colour beside an image would leave nothing of it.
    if (image && (!description.hasDiffuse || diffuse == osg::Vec3()))
        diffuse.set(1, 1, 1);
    if (const osg::ref_ptr<osg::Image> opaque = readImageFile(description.opacityImage.file, directory))
        image = withOpacity(image, *opaque);
    if (image) {
        const Map& map = description.image.file.empty() ? description.opacityImage : description.image;
        state->setTextureAttributeAndModes(0, makeTexture(map, image));
        placeTexture(*state, map);
        isTransparent = isTransparent || image->isImageTranslucent();
    }
    const osg::Vec3 emission = addEmissionOf(*state, description, directory);
    const osg::ref_ptr<osg::Material> material = new osg::Material;
    material->setName(description.name);
    constexpr auto both = osg::Material::FRONT_AND_BACK;
    material->setAmbient(both, {description.ambient, opacity});
    material->setDiffuse(both, {diffuse, opacity});
    material->setSpecular(both, {description.specular, opacity});
    material->setEmission(both, {emission, opacity});
    material->setShininess(both, std::clamp(description.exponent, 0.0f, highestExponent) / highestExponent *
                                     highestShininess);
    state->setAttribute(material);
    if (isTransparent) {
        state->setAttributeAndModes(
            new osg::BlendFunc(osg::BlendFunc::SRC_ALPHA, osg::BlendFunc::ONE_MINUS_SRC_ALPHA));
        state->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    }
    return state;
}

} // namespace

void ObjMaterials::addLibrary(const std::string& names)
{
    // A name may hold spaces, and a line several names.
    if (readLibrary(names))
        return;
    std::istringstream words(names);
    std::size_t count = 0;
    for (std::string name; words >> name; ++count) {
        if (name != names)
            readLibrary(name);
    }
    if (count < 2)
        FileGate::noteFailure(names, "the materials are missing");
}

bool ObjMaterials::readLibrary(const std::string& name)
{
    const std::string path = SideFiles::find(name, {m_directory});
    if (path.empty())
        return false;
    const MappedFile file(path);
    FileGate::noteFile(path);
    const PlainText plainText(file.text());
    TextScanner scanner(plainText.text());
    Description description;
    const std::string directory = osgDB::getFilePath(path);
    const auto add = [&] {
        if (!description.name.empty())
            m_materials[description.name] = makeState(description, directory);
    };
    for (; !scanner.isAtEnd(); scanner.nextLine()) {
        const std::string_view word = scanner.word();
        if (word == "newmtl") {
            add();
            description = Description();
            description.name = scanner.rest();
        } else if (!word.empty()) {
            takeLine(scanner, word, description);
        }
    }
    add();
    return true;
}

osg::StateSet* ObjMaterials::find(const std::string& name) const
{
    const auto found = m_materials.find(name);
    return found == m_materials.end() ? nullptr : found->second.get();
}

} // namespace vfFormats
