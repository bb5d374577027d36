// SPDX-License-Identifier: MIT
// Formats that Assimp reads.
#include "model/ModelDocument.h"
#include "support/Gltf.h"
#include "support/Reading.h"

#include <velaforge/formats/FormatList.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/MatrixTransform>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <cstring>
#include <sstream>

using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::ReadOutcome;
using vfTest::base64;

namespace {

std::string floats(const std::vector<float>& values)
{
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float)};
}

class AssimpReader : public vfTest::Reading
{
protected:
    void SetUp() override
    {
        if (!vfFormats::hasAssimp())
            GTEST_SKIP() << "built without Assimp";
    }

    /// A triangle that moves up by two units in a second, with an image on it. @param image  where that is
    std::string movingTriangle(const std::string& image) const
    {
        const std::string data = floats({0, 0, 0, 1, 0, 0, 0, 1, 0}) + floats({0, 0, 1, 0, 0, 1}) +
                                 floats({0, 1}) + floats({0, 0, 0, 0, 2, 0});
        const auto view = [](int offset, int length) {
            return R"({"buffer":0,"byteOffset":)" + std::to_string(offset) + R"(,"byteLength":)" +
                   std::to_string(length) + "}";
        };
        const auto accessor = [](int number, int count, const char* type, const char* more = "") {
            return R"({"bufferView":)" + std::to_string(number) + R"(,"componentType":5126,"count":)" +
                   std::to_string(count) + R"(,"type":")" + type + "\"" + more + "}";
        };
        std::ostringstream text;
        text
            << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],)"
            << R"("nodes":[{"name":"lift","mesh":0}],)"
            << R"("meshes":[{"name":"plate","primitives":[{"attributes":{"POSITION":0,"TEXCOORD_0":1},"material":0}]}],)"
            << R"("materials":[{"name":"paint","pbrMetallicRoughness":{"baseColorFactor":[0.5,0.25,1,1],)"
            << R"("baseColorTexture":{"index":0}}}],)"
            << R"("textures":[{"source":0,"sampler":0}],"samplers":[{"wrapS":33071,"wrapT":33648}],)"
            << R"("images":[{"uri":")" << image << "\"}],"
            << R"("animations":[{"channels":[{"sampler":0,"target":{"node":0,"path":"translation"}}],)"
            << R"("samplers":[{"input":2,"output":3,"interpolation":"LINEAR"}]}],)"
            << "\"accessors\":[" << accessor(0, 3, "VEC3", R"(,"min":[0,0,0],"max":[1,1,0])") << ','
            << accessor(1, 3, "VEC2") << ',' << accessor(2, 2, "SCALAR", R"(,"min":[0],"max":[1])") << ','
            << accessor(3, 2, "VEC3") << "],\"bufferViews\":[" << view(0, 36) << ',' << view(36, 24) << ','
            << view(60, 8) << ',' << view(68, 24)
            << R"(],"buffers":[{"byteLength":92,"uri":"data:application/octet-stream;base64,)" << base64(data)
            << "\"}]}";
        return directory.write("moving.gltf", text.str());
    }

    /// An image of one colour. @return its bytes as a file
    std::string image(const std::string& name) const
    {
        const osg::ref_ptr<osg::Image> picture = new osg::Image;
        picture->allocateImage(2, 2, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
        std::memset(picture->data(), 100, picture->getTotalSizeInBytes());
        EXPECT_TRUE(osgDB::writeImageFile(*picture, directory.file(name)));
        return vfTest::readFile(directory.file(name));
    }
};

/// What there is in a scene, the first of each.
struct Found : osg::NodeVisitor
{
    explicit Found(osg::Node& scene) : NodeVisitor(TRAVERSE_ALL_CHILDREN) { scene.accept(*this); }
    void apply(osg::MatrixTransform& node) override
    {
        if (node.getUpdateCallback() && !moving)
            moving = &node;
        traverse(node);
    }
    void apply(osg::Geometry& node) override { geometry = &node; }

    osg::MatrixTransform* moving = nullptr;
    osg::Geometry* geometry = nullptr;
};

void expectPainted(const ReadOutcome& outcome)
{
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, IsEmpty());
    const Found found(*outcome.scene);
    ASSERT_TRUE(found.geometry);
    const osg::StateSet* state = found.geometry->getStateSet();
    ASSERT_TRUE(state);
    const auto* texture =
        dynamic_cast<const osg::Texture2D*>(state->getTextureAttribute(0, osg::StateAttribute::TEXTURE));
    ASSERT_TRUE(texture);
    EXPECT_NEAR(100.0 / 255, texture->getImage()->getColor(0u, 0u).g(), 1e-3);
    EXPECT_EQ(osg::Texture::CLAMP_TO_EDGE, texture->getWrap(osg::Texture::WRAP_S));
    EXPECT_EQ(osg::Texture::MIRROR, texture->getWrap(osg::Texture::WRAP_T));
    const auto& material =
        dynamic_cast<const osg::Material&>(*state->getAttribute(osg::StateAttribute::MATERIAL));
    EXPECT_EQ("paint", material.getName());
    // The format's colours are linear; those of materials are as screens show them.
    const osg::Vec4 diffuse = material.getDiffuse(osg::Material::FRONT);
    EXPECT_NEAR(0.735, diffuse.r(), 0.001);
    EXPECT_NEAR(0.537, diffuse.g(), 0.001);
    EXPECT_NEAR(1, diffuse.b(), 0.001);
    EXPECT_TRUE(found.geometry->getTexCoordArray(0));
}

} // namespace

TEST_F(AssimpReader, MaterialsAndImagesComeWithTheModel)
{
    image("beside.png");
    expectPainted(read(movingTriangle("beside.png")));
}

TEST_F(AssimpReader, ImagesMayLieWithinTheFile)
{
    expectPainted(read(movingTriangle("data:image/png;base64," + base64(image("within.png")))));
}

TEST_F(AssimpReader, ImagesOfOtherFormatsThanTheListedAreRefused)
{
    const ReadOutcome outcome = read(movingTriangle("data:image/svg;base64," + base64("<svg/>")));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, testing::ElementsAre(HasSubstr("not a listed image format")));
    EXPECT_THAT(read(movingTriangle("http://localhost:9/picture.png")).warnings,
                testing::ElementsAre(HasSubstr("picture.png")));
}

TEST_F(AssimpReader, WhatMovesInTheFileMovesInTheScene)
{
    image("beside.png");
    const ReadOutcome outcome = read(movingTriangle("beside.png"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const Found found(*outcome.scene);
    ASSERT_TRUE(found.moving);
    EXPECT_EQ("lift", found.moving->getName());
    vfViewer::ModelDocument document;
    document.getModelScene().setModel(outcome.scene);
    vfScene::ModelAnimation& animation = document.getAnimation();
    animation.reset();
    EXPECT_THAT(animation.getNames(), testing::ElementsAre("1"));
    EXPECT_DOUBLE_EQ(1, animation.getDuration());
    EXPECT_EQ(osg::Vec3d(), found.moving->getMatrix().getTrans());
    animation.setTime(0.5);
    EXPECT_NEAR(1, found.moving->getMatrix().getTrans().y(), 1e-5);
}

TEST_F(AssimpReader, NodesAndMeshesKeepTheirNames)
{
    image("beside.png");
    const ReadOutcome outcome = read(movingTriangle("beside.png"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ("plate", Found(*outcome.scene).geometry->getName());
}

TEST_F(AssimpReader, ADamagedFileIsAReasonInOneLine)
{
    for (const char* name :
         {"a.gltf", "a.glb", "a.fbx", "a.3mf", "a.off", "a.x3d", "a.amf", "a.ase", "a.md5mesh"})
    {
        const ReadOutcome outcome = read(directory.write(name, "this is none\n"));
        EXPECT_FALSE(outcome.scene) << name;
        EXPECT_NE("", outcome.reason) << name;
        EXPECT_EQ(std::string::npos, outcome.reason.find('\n')) << name;
    }
}

TEST_F(AssimpReader, AMaterialThatStandsForNoneHasItsColourAllTheSame)
{
    // Both are called alike by the reader; only the grey one means nothing.
    const auto materialOf = [this](const std::string& color) -> osg::ref_ptr<const osg::Material> {
        const ReadOutcome outcome =
            read(directory.write("a.nff", "f " + color + " 1 0 0 0 0\np 3\n0 0 0\n1 0 0\n0 1 0\n"));
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        const osg::StateSet* state = outcome.scene ? Found(*outcome.scene).geometry->getStateSet() : nullptr;
        return state ? dynamic_cast<const osg::Material*>(state->getAttribute(osg::StateAttribute::MATERIAL))
                     : nullptr;
    };
    const osg::ref_ptr<const osg::Material> red = materialOf("1 0 0");
    ASSERT_TRUE(red);
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), red->getDiffuse(osg::Material::FRONT));
    EXPECT_FALSE(materialOf("0.6 0.6 0.6"));
}

TEST_F(AssimpReader, RoomForColoursIsNoColour)
{
    const std::string vertex = "<vertex><coordinates><x>";
    const ReadOutcome outcome = read(directory.write(
        "a.amf",
        "<?xml version=\"1.0\"?><amf unit=\"millimeter\"><object id=\"1\"><mesh><vertices>" + vertex +
            "0</x><y>0</y><z>0</z></coordinates></vertex>" + vertex +
            "1</x><y>0</y><z>0</z></coordinates></vertex>" + vertex +
            "0</x><y>1</y><z>0</z></coordinates></vertex></vertices><volume><triangle><v1>0</v1><v2>1</v2>"
            "<v3>2</v3></triangle></volume></mesh></object></amf>"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_FALSE(Found(*outcome.scene).geometry->getColorArray());
}
