// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/ObjReader.h>
#include <velaforge/formats/readers/SideFiles.h>

#include <osg/BlendFunc>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Material>
#include <osg/TexMat>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::readObj;
using vfFormats::ReadOutcome;
using vfTest::TemporaryDirectory;

namespace {

class ObjReader : public testing::Test
{
protected:
    ObjReader() { vfFormats::FileGate::install(); }

    ReadOutcome read(const std::string& text) const
    {
        const std::string path = directory.write("model.obj", text);
        const vfFormats::SideFiles rule(path, vfFormats::findSideFiles(path));
        return readObj(path);
    }

    /// A square with y up, with texture places and one normal.
    static std::string square() { return "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"; }

    /// How a square of that material is drawn; the library is as given.
    osg::ref_ptr<osg::StateSet> material(const std::string& library)
    {
        directory.write("model.mtl", library);
        const ReadOutcome outcome = read("mtllib model.mtl\n" + square() +
                                         "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nusemtl m\nf 1/1 2/2 3/3 4/4\n");
        EXPECT_TRUE(outcome.scene) << outcome.reason;
        return outcome.scene ? geometry(outcome).getStateSet() : nullptr;
    }

    static osg::Geode& part(const ReadOutcome& outcome, unsigned int index = 0)
    {
        return *outcome.scene->asGroup()->getChild(index)->asGeode();
    }

    static osg::Geometry& geometry(const ReadOutcome& outcome, unsigned int partIndex = 0,
                                   unsigned int index = 0)
    {
        return *part(outcome, partIndex).getDrawable(index)->asGeometry();
    }

    static const osg::Vec3Array& points(const osg::Geometry& geometry)
    {
        return dynamic_cast<const osg::Vec3Array&>(*geometry.getVertexArray());
    }

    static std::vector<unsigned int> indices(const osg::Geometry& geometry)
    {
        std::vector<unsigned int> all;
        for (unsigned int i = 0; i < geometry.getPrimitiveSet(0)->getNumIndices(); ++i)
            all.push_back(geometry.getPrimitiveSet(0)->index(i));
        return all;
    }

    static const osg::Material& material(const osg::StateSet& state)
    {
        return dynamic_cast<const osg::Material&>(*state.getAttribute(osg::StateAttribute::MATERIAL));
    }

    static const osg::Texture2D* texture(const osg::StateSet& state)
    {
        return dynamic_cast<const osg::Texture2D*>(
            state.getTextureAttribute(0, osg::StateAttribute::TEXTURE));
    }

    std::string writeImage(const std::string& name, unsigned char red, unsigned char alpha = 255) const
    {
        const osg::ref_ptr<osg::Image> image = new osg::Image;
        image->allocateImage(2, 2, 1, GL_RGBA, GL_UNSIGNED_BYTE);
        for (int i = 0; i < 4; ++i) {
            unsigned char* pixel =
                image->data(static_cast<unsigned int>(i % 2), static_cast<unsigned int>(i / 2));
            pixel[0] = red;
            pixel[1] = pixel[2] = 0;
            pixel[3] = alpha;
        }
        std::string path = directory.file(name);
        EXPECT_TRUE(osgDB::writeImageFile(*image, path));
        return path;
    }

    TemporaryDirectory directory;
    static constexpr auto front = osg::Material::FRONT;
};

} // namespace

TEST_F(ObjReader, HasZUpAndSharesPoints)
{
    const ReadOutcome outcome = read(square() + "f 1 2 3\nf 1 3 4\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(points(geometry(outcome)),
                ElementsAre(osg::Vec3(0, 0, 0), osg::Vec3(1, 0, 0), osg::Vec3(1, 0, 1), osg::Vec3(0, 0, 1)));
    EXPECT_THAT(indices(geometry(outcome)), ElementsAre(0, 1, 2, 0, 2, 3));
    EXPECT_EQ(nullptr, geometry(outcome).getNormalArray());
}

TEST_F(ObjReader, GroupsAndObjectsAreParts)
{
    const ReadOutcome outcome =
        read(square() + "f 1 2 3\ng left side\nf 1 2 3\ng right\nf 1 2 4\ng left side\nf 1 3 4\n"
                        "o thing\nf 2 3 4\ng\nf 1 2 3\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    std::vector<std::string> names;
    for (unsigned int i = 0; i < outcome.scene->asGroup()->getNumChildren(); ++i)
        names.push_back(part(outcome, i).getName());
    EXPECT_THAT(names, ElementsAre("", "left side", "right", "thing"));
    EXPECT_EQ(6u, indices(geometry(outcome, 1)).size()) << "a name that comes back goes on";
    EXPECT_EQ(6u, indices(geometry(outcome, 3)).size());
}

TEST_F(ObjReader, CornersThatDifferInTextureOrNormalAreApart)
{
    const ReadOutcome outcome = read(
        square() + "vt 0 0\nvt 0.5 0.25\nvn 0 0 1\nvn 0 1 0\nf 1/1/1 2/1/1 3/1/1\nf 1/2/1 3/1/1 4/1/2\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const osg::Geometry& all = geometry(outcome);
    EXPECT_THAT(indices(all), ElementsAre(0, 1, 2, 3, 2, 4));
    EXPECT_EQ(points(all)[0], points(all)[3]);
    const auto& places = dynamic_cast<const osg::Vec2Array&>(*all.getTexCoordArray(0));
    EXPECT_EQ(osg::Vec2(0.5f, 0.25f), places[3]);
    const auto& normals = dynamic_cast<const osg::Vec3Array&>(*all.getNormalArray());
    EXPECT_EQ(osg::Vec3(0, -1, 0), normals[0]) << "turned with the points";
    EXPECT_EQ(osg::Vec3(0, 0, 1), normals[4]);
}

TEST_F(ObjReader, CountsBackFromTheEndAndGoesOnAcrossLines)
{
    const ReadOutcome outcome =
        read("v 0 0 0\r\nv 1 0 \\\r\n 0\r\nv +1 1 0 # no comment here\nf -3 \\\n-2 -1\n"
             "v 5 5 5\nf -4// -3// -1//\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(indices(geometry(outcome)), ElementsAre(0, 1, 2, 0, 1, 3));
    EXPECT_EQ(osg::Vec3(5, -5, 5), points(geometry(outcome))[3]);
}

TEST_F(ObjReader, PolygonsAreCutAlsoWhereTheyHaveADent)
{
    const ReadOutcome outcome = read("v 0 0 0\nv 2 0 0\nv 0.5 0.5 0\nv 0 2 0\nf 2 3 4 1\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(6u, indices(geometry(outcome)).size());
    EXPECT_THAT(indices(geometry(outcome)), testing::Not(ElementsAre(0, 1, 2, 0, 2, 3)));
}

TEST_F(ObjReader, LinesAndPointsAreDrawnAsSuch)
{
    const ReadOutcome outcome = read(square() + "l 1 2 3\np 4 1\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    ASSERT_EQ(2u, part(outcome).getNumDrawables());
    EXPECT_EQ(static_cast<GLenum>(GL_LINES), geometry(outcome).getPrimitiveSet(0)->getMode());
    EXPECT_THAT(indices(geometry(outcome)), ElementsAre(0, 1, 1, 2));
    EXPECT_EQ(static_cast<GLenum>(GL_POINTS), geometry(outcome, 0, 1).getPrimitiveSet(0)->getMode());
}

TEST_F(ObjReader, PointsMayHaveColours)
{
    const ReadOutcome outcome = read("v 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0 0 0 0.5\nf 1 2 3\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const auto& colors = dynamic_cast<const osg::Vec4Array&>(*geometry(outcome).getColorArray());
    EXPECT_THAT(colors, ElementsAre(osg::Vec4(1, 0, 0, 1), osg::Vec4(0, 1, 0, 1), osg::Vec4(0, 0, 0.5f, 1)));
    EXPECT_EQ(nullptr, geometry(read("v 0 0 0 1\nv 1 0 0 1\nv 1 1 0 1\nf 1 2 3\n")).getColorArray())
        << "one more number is a weight";
}

TEST_F(ObjReader, EachMaterialIsAGeometryOfItsPart)
{
    directory.write("a b.mtl", "newmtl red\nKd 1 0 0\n");
    directory.write("c.mtl", "newmtl green\r\nKd 0 1 0\r\n");
    directory.write("d.mtl", "newmtl blue\nKd 0 0 1\n");
    const ReadOutcome outcome =
        read("mtllib a b.mtl\nmtllib c.mtl d.mtl\n" + square() +
             "g part\nusemtl red\nf 1 2 3\nusemtl blue\nf 1 3 4\nusemtl red\nf 1 2 4\n"
             "usemtl unknown\nf 2 3 4\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    ASSERT_EQ(3u, part(outcome).getNumDrawables());
    EXPECT_EQ("red", geometry(outcome).getName());
    EXPECT_EQ(6u, indices(geometry(outcome)).size());
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), material(*geometry(outcome, 0, 0).getStateSet()).getDiffuse(front));
    EXPECT_EQ(osg::Vec4(0, 0, 1, 1), material(*geometry(outcome, 0, 1).getStateSet()).getDiffuse(front));
    EXPECT_EQ(nullptr, geometry(outcome, 0, 2).getStateSet());
    EXPECT_THAT(vfFormats::FileGate::takeFailures(), IsEmpty());
}

TEST_F(ObjReader, AMaterialHasItsColoursShineAndOpacity)
{
    const auto state =
        material("newmtl m\nKa 0.1 0.2 0.3\nKd 0.4 0.5 0.6\nKs 0.7 0.8 0.9\nKe 0.25 0 0\nNs 500\nd 0.5\n");
    const osg::Material& all = material(*state);
    EXPECT_EQ(osg::Vec4(0.1f, 0.2f, 0.3f, 0.5f), all.getAmbient(front));
    EXPECT_EQ(osg::Vec4(0.4f, 0.5f, 0.6f, 0.5f), all.getDiffuse(front));
    EXPECT_EQ(osg::Vec4(0.7f, 0.8f, 0.9f, 0.5f), all.getSpecular(front));
    EXPECT_EQ(osg::Vec4(0.25f, 0, 0, 0.5f), all.getEmission(front));
    EXPECT_FLOAT_EQ(64, all.getShininess(front));
    EXPECT_EQ(osg::StateSet::TRANSPARENT_BIN, state->getRenderingHint());
    EXPECT_FLOAT_EQ(0.75f, material(*material("newmtl m\nTr 0.25\n")).getDiffuse(front).a());
    EXPECT_FLOAT_EQ(0.25f, material(*material("newmtl m\nd -halo 0.25\n")).getDiffuse(front).a());
    EXPECT_EQ(osg::Vec4(0.5f, 0.5f, 0.5f, 1), material(*material("newmtl m\nKd 0.5\n")).getDiffuse(front));
    EXPECT_NE(osg::StateSet::TRANSPARENT_BIN, material("newmtl m\nKd 1 1 1\n")->getRenderingHint());
}

TEST_F(ObjReader, AnImageLiesOnTheSurfaceAsTheMaterialSays)
{
    writeImage("my image.png", 200);
    auto state = material("newmtl m\nKd 0 0 0\nmap_Kd -s 2 3 -o 0.5 -clamp on -mm 0 1 my image.png\n");
    ASSERT_TRUE(texture(*state));
    EXPECT_EQ(osg::Texture::CLAMP_TO_EDGE, texture(*state)->getWrap(osg::Texture::WRAP_S));
    EXPECT_FLOAT_EQ(200.0f / 255, texture(*state)->getImage()->getColor(0u, 0u).r());
    EXPECT_EQ(osg::Vec4(1, 1, 1, 1), material(*state).getDiffuse(front)) << "black would leave nothing of it";
    const auto* place =
        dynamic_cast<const osg::TexMat*>(state->getTextureAttribute(0, osg::StateAttribute::TEXMAT));
    ASSERT_TRUE(place);
    EXPECT_EQ(osg::Vec3d(2.5, 3, 0), osg::Vec3d(1, 1, 0) * place->getMatrix());

    state = material("newmtl m\nKd 0.5 0.5 0.5\nmap_Kd C:\\work\\my image.png\n");
    ASSERT_TRUE(texture(*state)) << "beside the materials, wherever it was once";
    EXPECT_FLOAT_EQ(0.5f, material(*state).getDiffuse(front).r());
}

TEST_F(ObjReader, OpacityMayBeAnImageOfItsOwn)
{
    writeImage("color.png", 255);
    writeImage("opacity.png", 128);
    const auto state = material("newmtl m\nmap_Kd color.png\nmap_d opacity.png\n");
    ASSERT_TRUE(texture(*state));
    const osg::Vec4 color = texture(*state)->getImage()->getColor(1u, 1u);
    EXPECT_FLOAT_EQ(1, color.r());
    EXPECT_NEAR(128.0 / 255, color.a(), 0.01);
    EXPECT_EQ(osg::StateSet::TRANSPARENT_BIN, state->getRenderingHint());
}

TEST_F(ObjReader, WhatIsMissingIsTold)
{
    const auto state = material("newmtl m\nmap_Kd none.png\n");
    EXPECT_EQ(nullptr, texture(*state));
    EXPECT_THAT(vfFormats::FileGate::takeFailures(), ElementsAre(HasSubstr("none.png: No such file")));
    EXPECT_TRUE(read("mtllib none.mtl\n" + square() + "f 1 2 3\n").scene);
    EXPECT_THAT(vfFormats::FileGate::takeFailures(), ElementsAre("none.mtl: the materials are missing"));
}

TEST_F(ObjReader, FacesOfPointsThatAreNotThereAreLeftAwayAndTold)
{
    const ReadOutcome outcome =
        read(square() +
             "f 1 2 3\nf 1 2 9\nf 1 -9 3\nf 0 1 2\nf 1 2\nf a b c\nf 99999999999999999999 1 2\nwhatever\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(3u, indices(geometry(outcome)).size());
    EXPECT_THAT(outcome.warnings, ElementsAre("6 faces name points that are not there"));
    EXPECT_THAT(outcome.details, ElementsAre("1 line begins with an unknown word"));
}

TEST_F(ObjReader, WhereNothingCanBeShownThereIsAReason)
{
    EXPECT_THAT(read("o nothing\n# here\n").reason, HasSubstr("damaged"));
    EXPECT_THAT(read("hello\n").reason, HasSubstr("damaged"));
    EXPECT_THAT(read(square() + "f 7 8 9\n").reason, HasSubstr("nothing in it"));
}

TEST_F(ObjReader, AManySidedTipIsReadInNoTime)
{
    std::string text = "v 0 0 1\nv 1 0 0\nv 0 1 0\n";
    for (int i = 0; i < 50000; ++i) {
        text += "vt " + std::to_string(i) + " 0\n";
        text += "f 1/-1 2/-1 3/-1\n";
    }
    const ReadOutcome outcome = read(text);
    ASSERT_TRUE(outcome.scene);
    EXPECT_EQ(150000u, indices(geometry(outcome)).size());
}

TEST_F(ObjReader, ACommentMayFollowAFace)
{
    const ReadOutcome outcome = read(square() + "f 1 2 3 # the lower half\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(3u, indices(geometry(outcome)).size());
    EXPECT_THAT(outcome.warnings, IsEmpty());
}

TEST_F(ObjReader, NeitherMarksNorLineEndsOfOtherProgramsLoseAPoint)
{
    const std::string text = square() + "f 1 2 3 4\n";
    std::string wide = "\xff\xfe";
    std::string old = text;
    for (char& letter : old)
        letter = letter == '\n' ? '\r' : letter;
    for (const char letter : text) {
        wide += letter;
        wide += '\0';
    }
    for (const std::string& contents : {"\xef\xbb\xbf" + text, old, wide}) {
        const ReadOutcome outcome = read(contents);
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_EQ(6u, indices(geometry(outcome)).size());
        EXPECT_THAT(outcome.warnings, IsEmpty());
    }
}

TEST_F(ObjReader, FacesMayStandAheadOfTheirPoints)
{
    const ReadOutcome outcome = read("f 1 2 3\nl 1 4\nf 1/9 2 4\nf 1 2 7\n" + square());
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(6u, indices(geometry(outcome)).size());
    EXPECT_EQ(GLenum(GL_LINES), geometry(outcome, 0, 1).getPrimitiveSet(0)->getMode());
    EXPECT_THAT(outcome.warnings, ElementsAre("1 face names points that are not there"));
}

TEST_F(ObjReader, PointsAloneAreACloud)
{
    const ReadOutcome outcome = read(square());
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(GLenum(GL_POINTS), geometry(outcome).getPrimitiveSet(0)->getMode());
    EXPECT_EQ(4u, geometry(outcome).getPrimitiveSet(0)->getNumIndices());
}

TEST_F(ObjReader, OneFaceWithoutATextureCostsTheOthersNothing)
{
    const ReadOutcome outcome =
        read(square() + "vt 0 0\nvt 1 0\nvt 1 1\nvn 0 0 1\nf 1/1/1 2/2/1 3/3/1\nf 1 3 4\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_TRUE(geometry(outcome).getTexCoordArray(0));
    EXPECT_TRUE(geometry(outcome).getNormalArray());
    EXPECT_FALSE(geometry(outcome, 0, 1).getTexCoordArray(0));
    EXPECT_FALSE(geometry(outcome, 0, 1).getNormalArray());
}

TEST_F(ObjReader, PointsWithoutAColourCostTheOthersNothing)
{
    const ReadOutcome outcome = read("v 0 0 0\nv 1 0 0 255 0 0\nv 1 1 0\nf 1 2 3\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const auto& colors = dynamic_cast<const osg::Vec4Array&>(*geometry(outcome).getColorArray());
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), colors[1]);
    EXPECT_EQ(colors[0], colors[2]);
    EXPECT_GT(colors[0].r(), 0.5f);
}

TEST_F(ObjReader, NoMaterialIsInvisible)
{
    EXPECT_FLOAT_EQ(1, material(*material("newmtl m\nTr 1\n")).getDiffuse(front).a());
    EXPECT_FLOAT_EQ(1, material(*material("newmtl m\nd 0\n")).getDiffuse(front).a());
    EXPECT_FLOAT_EQ(0.5f, material(*material("newmtl m\nd 0.5\nTr 0.25\n")).getDiffuse(front).a());
}

TEST_F(ObjReader, ImagesOfOtherMachinesAreFound)
{
    std::filesystem::create_directory(directory.file("Textures"));
    writeImage("Textures/Hull.png", 200);
    for (const char* line : {"map_Kd hull.PNG", "map_kd \"C:\\Users\\me\\HULL.png\"",
                             "MAP_KD textures/hull.png", "map_Kd D:/boats/textures/hull%2Epng"})
    {
        EXPECT_TRUE(texture(*material(std::string("newmtl m\n") + line + "\n"))) << line;
        EXPECT_THAT(vfFormats::FileGate::takeFailures(), IsEmpty()) << line;
    }
}

TEST_F(ObjReader, APictureOfWhatASurfaceEmitsIsRead)
{
    writeImage("glow.png", 100);
    const auto state = material("newmtl m\nKe 1 1 1\nmap_Ke glow.png\n");
    EXPECT_EQ(osg::Vec4(0, 0, 0, 1), material(*state).getEmission(front))
        << "which would make all of it white";
    const auto* glow =
        dynamic_cast<const osg::Texture2D*>(state->getTextureAttribute(1, osg::StateAttribute::TEXTURE));
    ASSERT_TRUE(glow);
    EXPECT_FLOAT_EQ(100.0f / 255, glow->getImage()->getColor(0u, 0u).r());
}

TEST_F(ObjReader, TheLibraryOfTheSameNameIsReadUnasked)
{
    directory.write("model.mtl", "newmtl m\nKd 1 0 0\n");
    const ReadOutcome outcome = read(square() + "usemtl m\nf 1 2 3\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    ASSERT_TRUE(geometry(outcome).getStateSet());
    EXPECT_FLOAT_EQ(1, material(*geometry(outcome).getStateSet()).getDiffuse(front).r());
}
