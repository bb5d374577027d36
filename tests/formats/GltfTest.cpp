// SPDX-License-Identifier: MIT
// What glTF files say of colours, textures and numbers.
#include "support/Gltf.h"
#include "support/Reading.h"

#include <velaforge/formats/FormatList.h>

#include <osg/BlendFunc>
#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/LightModel>
#include <osg/LightSource>
#include <osg/Material>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::ReadOutcome;
using vfTest::bytesOf;
using vfTest::Gltf;

namespace {

/// Whatever of a kind is first in a scene.
struct First : osg::NodeVisitor
{
    explicit First(osg::Node& scene) : NodeVisitor(TRAVERSE_ALL_CHILDREN) { scene.accept(*this); }
    void apply(osg::Geometry& node) override { geometry = geometry ? geometry : &node; }
    void apply(osg::LightSource& node) override
    {
        lamp = &node;
        traverse(node);
    }
    osg::Geometry* geometry = nullptr;
    osg::LightSource* lamp = nullptr;
};

class GltfFiles : public vfTest::Reading
{
protected:
    void SetUp() override
    {
        if (!vfFormats::hasAssimp())
            GTEST_SKIP() << "built without Assimp";
    }

    /// Reads a file. @return its first geometry
    osg::Geometry& geometryOf(const Gltf& gltf)
    {
        return geometryIn(directory.write("model.gltf", gltf.text()));
    }

    osg::Geometry& geometryIn(const std::string& path)
    {
        outcome = read(path);
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        osg::Geometry* found = outcome.scene ? First(*outcome.scene).geometry : nullptr;
        if (!found)
            throw std::runtime_error("there is no geometry");
        return *found;
    }

    static Gltf square() { return Gltf().floats("POSITION", 3, vfTest::squarePoints()); }

    static Gltf texturedSquare() { return square().floats("TEXCOORD_0", 2, vfTest::squarePlaces()); }

    static const osg::Material& materialOf(const osg::Geometry& geometry)
    {
        return dynamic_cast<const osg::Material&>(
            *geometry.getStateSet()->getAttribute(osg::StateAttribute::MATERIAL));
    }

    static osg::Vec4 colorOf(const osg::Geometry& geometry, unsigned int vertex)
    {
        const auto* colors = dynamic_cast<const osg::Vec4Array*>(geometry.getColorArray());
        return colors ? colors->at(vertex) : osg::Vec4();
    }

    static const osg::Texture2D* textureOf(const osg::Geometry& geometry, unsigned int unit)
    {
        return dynamic_cast<const osg::Texture2D*>(
            geometry.getStateSet()->getTextureAttribute(unit, osg::StateAttribute::TEXTURE));
    }

    /// Writes a picture of one colour. @return its name
    std::string picture(const std::string& name, unsigned char red, unsigned char green,
                        unsigned char blue) const
    {
        const osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(2, 2, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
        for (unsigned int i = 0; i < 4; ++i) {
            unsigned char* pixel = image->data(i % 2, i / 2);
            pixel[0] = red;
            pixel[1] = green;
            pixel[2] = blue;
        }
        EXPECT_TRUE(osgDB::writeImageFile(*image, directory.file(name)));
        return name;
    }

    ReadOutcome outcome;
};

void expectNear(const osg::Vec4& expected, const osg::Vec4& color)
{
    for (int part = 0; part < 4; ++part)
        EXPECT_NEAR(expected[part], color[part], 0.01) << part;
}

} // namespace

TEST_F(GltfFiles, ColoursOfVerticesOfEveryKindAreDrawn)
{
    const std::vector<float> shares = {1, 0, 0.2158f, 0, 1, 0, 0, 0, 1, 1, 0, 0, 0, 0, 1, 1, 1, 1};
    std::vector<float> four;
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint16_t> shorts;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        four.push_back(shares[i]);
        bytes.push_back(static_cast<std::uint8_t>(shares[i] * 255));
        shorts.push_back(static_cast<std::uint16_t>(shares[i] * 65535));
        if (i % 3 == 2) {
            four.push_back(1);
            bytes.push_back(255);
            shorts.push_back(65535);
        }
    }
    const std::string normalized = R"(,"normalized":true)";
    const std::vector<Gltf> files = {
        square().floats("COLOR_0", 3, shares), square().floats("COLOR_0", 4, four),
        square().attribute("COLOR_0", 5121, "VEC4", 6, bytesOf(bytes), normalized),
        square().attribute("COLOR_0", 5121, "VEC3", 6, bytesOf(bytes), normalized, 4),
        square().attribute("COLOR_0", 5123, "VEC4", 6, bytesOf(shorts), normalized)};
    for (const Gltf& file : files) {
        const osg::Geometry& geometry = geometryOf(file);
        expectNear({1, 0, 0.5f, 1}, colorOf(geometry, 0)); // linear becomes what screens show
        expectNear({0, 1, 0, 1}, colorOf(geometry, 1));
        EXPECT_EQ(osg::Material::AMBIENT_AND_DIFFUSE, materialOf(geometry).getColorMode());
    }
}

TEST_F(GltfFiles, TheColourOfTheMaterialIsMultipliedIntoThoseOfVertices)
{
    const Gltf file = square()
                          .floats("COLOR_0", 3, std::vector<float>(18, 0.5f))
                          .material(R"("pbrMetallicRoughness":{"baseColorFactor":[0.4316,1,0,1]})");
    expectNear({0.5f, 0.735f, 0, 1}, colorOf(geometryOf(file), 0));
}

TEST_F(GltfFiles, AMaterialIsLinear)
{
    const Gltf file =
        square().material(R"("pbrMetallicRoughness":{"baseColorFactor":[0.2158,0.2158,0.2158,1]})");
    expectNear({0.5f, 0.5f, 0.5f, 1}, materialOf(geometryOf(file)).getDiffuse(osg::Material::FRONT));
}

TEST_F(GltfFiles, WhatAPictureEmitsIsAddedWhereItShines)
{
    const std::string glow = picture("glow spot.png", 200, 100, 0);
    const auto file = [](const std::string& factor) {
        return texturedSquare()
            .material(R"("emissiveFactor":)" + factor + R"(,"emissiveTexture":{"index":0})")
            .more(R"(,"textures":[{"source":0}],"images":[{"uri":"glow%20spot.png"}])");
    };
    const osg::Geometry& geometry = geometryOf(file("[1,1,0]"));
    EXPECT_THAT(outcome.warnings, IsEmpty());
    ASSERT_TRUE(textureOf(geometry, 1));
    EXPECT_TRUE(geometry.getTexCoordArray(1));
    expectNear({200 / 255.0f, 100 / 255.0f, 0, 1}, textureOf(geometry, 1)->getImage()->getColor(0u, 0u));
    expectNear({0, 0, 0, 1}, materialOf(geometry).getEmission(osg::Material::FRONT));
    EXPECT_FALSE(textureOf(geometryOf(file("[0,0,0]")), 1));
}

TEST_F(GltfFiles, WithoutThePictureOfWhatItEmitsAModelIsNotWhite)
{
    const Gltf file = texturedSquare()
                          .material(R"("emissiveFactor":[1,1,1],"emissiveTexture":{"index":0})")
                          .more(R"(,"textures":[{"source":0}],"images":[{"uri":"nowhere.png"}])");
    expectNear({0, 0, 0, 1}, materialOf(geometryOf(file)).getEmission(osg::Material::FRONT));
    EXPECT_THAT(outcome.warnings, ElementsAre(HasSubstr("nowhere.png")));
}

TEST_F(GltfFiles, UnlitMaterialsShowTheirColourAsItIs)
{
    const Gltf file = square()
                          .material(R"("pbrMetallicRoughness":{"baseColorFactor":[0.2158,0,0,1]},)"
                                    R"("extensions":{"KHR_materials_unlit":{}})")
                          .more(R"(,"extensionsUsed":["KHR_materials_unlit"])");
    osg::Geometry& geometry = geometryOf(file);
    const auto* around = dynamic_cast<const osg::LightModel*>(
        geometry.getStateSet()->getAttribute(osg::StateAttribute::LIGHTMODEL));
    ASSERT_TRUE(around);
    EXPECT_EQ(osg::Vec4(1, 1, 1, 1), around->getAmbientIntensity());
    expectNear({0.5f, 0, 0, 1}, materialOf(geometry).getAmbient(osg::Material::FRONT));
}

TEST_F(GltfFiles, WhatIsBlendedMayBeInvisible)
{
    const auto opacity = [this](const std::string& mode) {
        const Gltf file = square().material(mode + R"("pbrMetallicRoughness":{"baseColorFactor":[1,0,0,0]})");
        return materialOf(geometryOf(file)).getDiffuse(osg::Material::FRONT).a();
    };
    EXPECT_EQ(0, opacity(R"("alphaMode":"BLEND",)"));
    EXPECT_EQ(1, opacity(""));
}

TEST_F(GltfFiles, TexturesAreMovedTurnedAndScaled)
{
    picture("plain.png", 10, 20, 30);
    const Gltf file =
        texturedSquare()
            .material(
                R"("pbrMetallicRoughness":{"baseColorTexture":{"index":0,"extensions":)"
                R"({"KHR_texture_transform":{"offset":[0.25,0.5],"rotation":1.5707963,"scale":[2,3]}}}})")
            .more(R"(,"textures":[{"source":0}],"images":[{"uri":"plain.png"}],)"
                  R"("extensionsUsed":["KHR_texture_transform"])");
    const auto& places = dynamic_cast<const osg::Vec2Array&>(*geometryOf(file).getTexCoordArray(0));
    // The place (1, 1) of the format is scaled to (2, 3), turned to (3, -2), and moved to (3.25, -1.5).
    EXPECT_NEAR(3.25, places[1].x(), 1e-4);
    EXPECT_NEAR(2.5, places[1].y(), 1e-4); // upwards
}

TEST_F(GltfFiles, NumbersThatAreSmallIntegersMakeTheSameModel)
{
    const auto extent = [this](const std::string& path) {
        geometryIn(path);
        osg::ComputeBoundsVisitor visitor;
        outcome.scene->accept(visitor);
        const osg::BoundingBox& box = visitor.getBoundingBox();
        return osg::Vec3(box.xMax() - box.xMin(), box.yMax() - box.yMin(), box.zMax() - box.zMin());
    };
    std::vector<std::int16_t> shorts;
    std::vector<std::int8_t> bytes;
    for (std::size_t i = 0; i < 18; ++i) {
        shorts.push_back(static_cast<std::int16_t>(vfTest::squarePoints()[i] * 16384));
        bytes.push_back(static_cast<std::int8_t>(vfTest::squarePoints()[i] * 100));
        if (i % 3 == 2) {
            shorts.push_back(-1); // what fills up the row
            bytes.push_back(-1);
        }
    }
    const std::string quantized = R"(,"extensionsUsed":["KHR_mesh_quantization"],)"
                                  R"("extensionsRequired":["KHR_mesh_quantization"])";
    const Gltf ofShorts =
        Gltf()
            .attribute("POSITION", 5122, "VEC3", 6, bytesOf(shorts), R"(,"normalized":true)", 8)
            .more(quantized);
    const Gltf ofBytes = Gltf().attribute("POSITION", 5120, "VEC3", 6, bytesOf(bytes), "", 4).more(quantized);
    EXPECT_NEAR(0.5, extent(directory.write("a.gltf", ofShorts.text())).x(), 1e-4);
    EXPECT_NEAR(0.5, extent(directory.write("a.glb", ofShorts.binary())).z(), 1e-4);
    EXPECT_NEAR(100, extent(directory.write("b.gltf", ofBytes.text())).x(), 1e-3);
    directory.write("c.bin", ofBytes.data());
    EXPECT_NEAR(100, extent(directory.write("c.gltf", ofBytes.textBeside("c.bin"))).z(), 1e-3);
}

TEST_F(GltfFiles, CountsBeyondTheFileAreNotBelieved)
{
    const auto file = [](const std::string& count) {
        Gltf made = Gltf().attribute("POSITION", 5122, "VEC3", 6, std::string(36, 'a'));
        std::string text = made.text();
        const std::size_t at = text.find(R"("count":6)");
        return text.replace(at, 9, R"("count":)" + count);
    };
    for (const char* count : {"7", "4294967295", "18446744073709551615", "-1", "1e30"}) {
        const ReadOutcome refused = read(directory.write("a.gltf", file(count)));
        EXPECT_EQ(std::string::npos, refused.reason.find("its reader fails")) << count << refused.reason;
    }
}

TEST_F(GltfFiles, FilesBesideAreFoundUnderTheirEncodedNames)
{
    const Gltf file = square();
    directory.write("my numbers.bin", file.data());
    outcome = read(directory.write("a.gltf", file.textBeside("my%20numbers.bin")));
    EXPECT_TRUE(outcome.scene) << outcome.reason;
    outcome = read(directory.write("b.gltf", file.textBeside("My Numbers.BIN")));
    EXPECT_TRUE(outcome.scene) << outcome.reason;
}

TEST_F(GltfFiles, WhatIsNotShownIsTold)
{
    const Gltf file = square()
                          .material(R"("normalTexture":{"index":0})")
                          .more(R"(,"textures":[{"source":0}],"images":[{"uri":"none.png"}],)"
                                R"("extensionsUsed":["KHR_materials_clearcoat"])");
    geometryOf(file);
    EXPECT_THAT(outcome.warnings, ElementsAre("not shown: clear coats, normal maps"));
    geometryOf(square());
    EXPECT_THAT(outcome.warnings, IsEmpty());
}

TEST_F(GltfFiles, LampsComeWithTheModel)
{
    const Gltf file =
        square()
            .nodes(R"({"mesh":0},{"extensions":{"KHR_lights_punctual":{"light":0}}})", "0,1")
            .more(
                R"(,"extensionsUsed":["KHR_lights_punctual"],"extensions":)"
                R"({"KHR_lights_punctual":{"lights":[{"type":"point","color":[1,0.5,0],"intensity":80}]}})");
    geometryOf(file);
    const First first(*outcome.scene);
    ASSERT_TRUE(first.lamp);
    const auto& light = dynamic_cast<const osg::Light&>(*first.lamp->getLight());
    expectNear({1, 0.5f, 0, 1}, light.getDiffuse());
}
