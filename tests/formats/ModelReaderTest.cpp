// SPDX-License-Identifier: MIT
#include "support/Models.h"
#include "support/TemporaryDirectory.h"

#include <velaforge/base/NotifyHandler.h>
#include <velaforge/formats/FormatList.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/ModelReader.h>

#include <osg/ComputeBoundsVisitor>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/Texture2D>
#include <osg/TriangleIndexFunctor>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::parseModel;
using vfFormats::readImageOnQuad;
using vfFormats::ReadOutcome;
using vfTest::TemporaryDirectory;

namespace {

class ModelReader : public testing::Test
{
protected:
    ModelReader()
    {
        vfBase::NotifyHandler::instance().install();
        vfFormats::FileGate::install();
    }

    /// A file with one triangle. @param normal  of each point @param face  the order of the points
    std::string triangle(const std::string& normal, const std::string& face) const
    {
        return directory.write("triangle.ply", "ply\nformat ascii 1.0\nelement vertex 3\n"
                                               "property float x\nproperty float y\nproperty float z\n"
                                               "property float nx\nproperty float ny\nproperty float nz\n"
                                               "element face 1\nproperty list uchar int vertex_indices\n"
                                               "end_header\n0 0 0 " +
                                                   normal + "\n1 0 0 " + normal + "\n0 1 0 " + normal +
                                                   "\n3 " + face + "\n");
    }

    TemporaryDirectory directory;
};

osg::BoundingBox boundsOf(osg::Node& node)
{
    osg::ComputeBoundsVisitor visitor;
    node.accept(visitor);
    return visitor.getBoundingBox();
}

/// Finds the geometries of a scene.
struct Geometries : osg::NodeVisitor
{
    explicit Geometries(osg::Node& node) : NodeVisitor(TRAVERSE_ALL_CHILDREN) { node.accept(*this); }
    void apply(osg::Geometry& geometry) override { found.push_back(&geometry); }
    std::vector<osg::Geometry*> found;
};

/// @return the first normal of the model, of no length when it has none
osg::Vec3 normalOf(const std::string& path)
{
    const ReadOutcome outcome = parseModel(path);
    EXPECT_TRUE(outcome.scene) << outcome.reason;
    if (!outcome.scene)
        return {};
    const auto* normals =
        dynamic_cast<const osg::Vec3Array*>(Geometries(*outcome.scene).found.at(0)->getNormalArray());
    return normals ? normals->front() : osg::Vec3();
}

struct CountOpposed
{
    const osg::Vec3Array* points = nullptr;
    const osg::Vec3Array* normals = nullptr;
    int opposed = 0;
    int agreeing = 0;
    void operator()(unsigned int a, unsigned int b, unsigned int c)
    {
        const osg::Vec3 side = ((*points)[b] - (*points)[a]) ^ ((*points)[c] - (*points)[a]);
        ++(side * (*normals)[a] < 0 ? opposed : agreeing);
    }
};

} // namespace

TEST_F(ModelReader, EveryFormatStandsUprightInTheSameSize)
{
    for (const std::string& format : vfTest::signpostFormats()) {
        const ReadOutcome outcome = parseModel(vfTest::signpost(format));
        ASSERT_TRUE(outcome.scene) << format << ": " << outcome.reason;
        const osg::BoundingBox box = boundsOf(*outcome.scene);
        EXPECT_NEAR(-0.15, box.zMin(), 1e-3) << format;
        EXPECT_NEAR(1.80, box.zMax(), 1e-3) << format;
        EXPECT_NEAR(-0.9, box.xMin(), 1e-3) << format;
        EXPECT_NEAR(0.9, box.yMax(), 1e-3) << format;
        EXPECT_THAT(outcome.warnings, IsEmpty()) << format;
    }
}

TEST_F(ModelReader, EverySurfaceHasNormalsOnTheSideOfItsTriangles)
{
    for (const std::string& format : vfTest::signpostFormats()) {
        const ReadOutcome outcome = parseModel(vfTest::signpost(format));
        ASSERT_TRUE(outcome.scene) << format;
        for (osg::Geometry* geometry : Geometries(*outcome.scene).found) {
            const auto* normals = dynamic_cast<const osg::Vec3Array*>(geometry->getNormalArray());
            ASSERT_TRUE(normals) << format;
            if (normals->getBinding() != osg::Array::BIND_PER_VERTEX)
                continue;
            osg::TriangleIndexFunctor<CountOpposed> count;
            count.points = dynamic_cast<const osg::Vec3Array*>(geometry->getVertexArray());
            count.normals = normals;
            geometry->accept(count);
            EXPECT_LT(count.opposed, count.agreeing) << format;
        }
    }
}

TEST_F(ModelReader, ASurfaceThatRunsTheWrongWayRoundIsNotBlack)
{
    // The normals point at us, the triangle runs clockwise.
    EXPECT_LT(normalOf(triangle("0 0 1", "0 2 1")).z(), -0.9f);
}

TEST_F(ModelReader, NormalsOfNoLengthAreMadeAnew)
{
    EXPECT_NEAR(1, normalOf(triangle("0 0 0", "0 1 2")).z(), 1e-4);
}

TEST_F(ModelReader, LampsShineOnNoLines)
{
    const ReadOutcome outcome =
        parseModel(directory.write("lines.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nl 1 2\nl 2 3\n"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    for (osg::Geometry* geometry : Geometries(*outcome.scene).found)
        EXPECT_FALSE(geometry->getStateSet()->getMode(GL_LIGHT5) & osg::StateAttribute::ON);
}

TEST_F(ModelReader, BadFilesGetAReasonInOneLineAndNothingElseIsSaid)
{
    const std::string cut = vfTest::readFile(vfTest::signpost("dae")).substr(0, 3000);
    const std::pair<std::string, std::string> cases[] = {
        {directory.file("missing.obj"), "No such file or directory"},
        {directory.path() + "/.", "not a format"},
        {directory.write("empty.obj", ""), "empty"},
        {directory.write("nonsense.obj", "hello\n"), "damaged"},
        {directory.write("nonsense.3ds", "hello, this is no model"), "cut off"},
        {directory.write("nonsense.ply", "hello\n"), "damaged"},
        {directory.write("cut.dae", cut), "damaged"},
        {directory.write("nothing.osgt",
                         "#Ascii Scene\n#Version 161\n#Generator OpenSceneGraph 3.6.5\n\nosg::Group "
                         "{\n  UniqueID 1\n}\n"),
         "nothing in it"},
        {directory.write("a.xyz", "x"), "not a format"},
        {directory.write("huge.obj", "v 1e30 0 0\nv 0 1e30 0\nv 0 0 1e30\nf 1 2 3\n"), "too large"},
    };
    for (const auto& [path, reason] : cases) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const ReadOutcome outcome = parseModel(path);
        EXPECT_EQ("", testing::internal::GetCapturedStdout()) << path;
        EXPECT_EQ("", testing::internal::GetCapturedStderr()) << path;
        EXPECT_FALSE(outcome.scene) << path;
        EXPECT_THAT(outcome.reason, HasSubstr(reason)) << path;
        EXPECT_EQ(std::string::npos, outcome.reason.find('\n')) << path;
    }
}

TEST_F(ModelReader, MissingTexturesAreWarnings)
{
    directory.write("a.mtl", "newmtl m\nmap_Kd missing.png\n");
    const ReadOutcome outcome = parseModel(directory.write(
        "a.obj", "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, testing::Contains(HasSubstr("missing.png: No such file or directory")));
}

TEST_F(ModelReader, AnImageStandsUprightInItsProportions)
{
    const ReadOutcome outcome = readImageOnQuad(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/quarters.png");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const osg::BoundingBox box = boundsOf(*outcome.scene);
    EXPECT_NEAR(128.0 / 96.0, box.xMax() - box.xMin(), 1e-5);
    EXPECT_NEAR(1.0, box.zMax() - box.zMin(), 1e-5);
    EXPECT_NEAR(0.0, box.yMax() - box.yMin(), 1e-5);
}

TEST_F(ModelReader, BadImagesGetAReason)
{
    EXPECT_THAT(readImageOnQuad(directory.file("missing.png")).reason, HasSubstr("No such file"));
    EXPECT_THAT(readImageOnQuad(directory.write("a.png", "no picture")).reason,
                HasSubstr("cannot be decoded"));
    EXPECT_THAT(readImageOnQuad(directory.write("a.obj", "v 0 0 0\n")).reason, HasSubstr("not an image"));
}

TEST_F(ModelReader, WhereNothingIsDrawnThereIsAReason)
{
    // Vertices without a face have bounds as well.
    const std::string text =
        "#Ascii Scene\n#Version 161\n#Generator OpenSceneGraph 3.6.5\n\nosg::Geometry {\n  UniqueID 1\n"
        "  PrimitiveSetList 1 {\n    osg::DrawArrays {\n      UniqueID 3\n      Mode TRIANGLES\n      Count "
        "2\n    }\n  }\n"
        "  VertexArray TRUE {\n    osg::Vec3Array {\n      UniqueID 2\n      Binding BIND_PER_VERTEX\n"
        "      vector 2 {\n        0 0 0\n        1 1 1\n      }\n    }\n  }\n}\n";
    const ReadOutcome outcome = parseModel(directory.write("bare.osgt", text));
    EXPECT_FALSE(outcome.scene);
    EXPECT_EQ("there is nothing in it that could be shown", outcome.reason);
}

TEST_F(ModelReader, TheDentOfAPolygonIsNotFilled)
{
    const std::string text =
        "#Ascii Scene\n#Version 161\n#Generator OpenSceneGraph 3.6.5\n\nosg::Geometry {\n  UniqueID 1\n"
        "  PrimitiveSetList 1 {\n    osg::DrawArrays {\n      UniqueID 2\n      Mode POLYGON\n      Count 4\n"
        "    }\n  }\n  VertexArray TRUE {\n    osg::Vec3Array {\n      UniqueID 3\n"
        "      Binding BIND_PER_VERTEX\n      vector 4 {\n        4 0 0\n        1 0 1\n        0 0 4\n"
        "        0 0 0\n      }\n    }\n  }\n}\n";
    const ReadOutcome outcome = parseModel(directory.write("dent.osgt", text));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const osg::Geometry& geometry = *Geometries(*outcome.scene).found.front();
    ASSERT_EQ(1u, geometry.getNumPrimitiveSets());
    const osg::PrimitiveSet& triangles = *geometry.getPrimitiveSet(0);
    ASSERT_EQ(6u, triangles.getNumIndices());
    const auto& points = dynamic_cast<const osg::Vec3Array&>(*geometry.getVertexArray());
    double area = 0;
    for (unsigned int i = 0; i < 6; i += 3) {
        const osg::Vec3& a = points[triangles.index(i)];
        area += ((points[triangles.index(i + 1)] - a) ^ (points[triangles.index(i + 2)] - a)).length() / 2;
    }
    EXPECT_NEAR(4, area, 1e-4);
}

TEST_F(ModelReader, ImagesThatCannotBeDecodedAreTold)
{
    directory.write("broken.png", "this is no picture");
    directory.write("m.mtl", "newmtl m\nmap_Kd broken.png\n");
    const ReadOutcome outcome = parseModel(directory.write(
        "m.obj", "mtllib m.mtl\nusemtl m\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nf 1/1 2/1 3/1\n"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, ElementsAre(HasSubstr("broken.png: the image cannot be decoded")));
}

TEST_F(ModelReader, AnImageIsReadByWhatItContains)
{
    const osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(3, 2, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    ASSERT_TRUE(osgDB::writeImageFile(*image, directory.file("a.png")));
    std::filesystem::rename(directory.file("a.png"), directory.file("a.jpg"));
    const ReadOutcome outcome = readImageOnQuad(directory.file("a.jpg"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const osg::BoundingBox box = boundsOf(*outcome.scene);
    EXPECT_NEAR(1.5, box.xMax() - box.xMin(), 1e-5);
}

TEST_F(ModelReader, ADdsImageStandsTheRightWayUp)
{
    // Two rows without compression, the upper one first: red above, blue below.
    std::string file = "DDS ";
    const auto add = [&file](std::uint32_t number) {
        for (int i = 0; i < 4; ++i)
            file += static_cast<char>(number >> (8 * i) & 255);
    };
    for (const std::uint32_t number : {124u, 0x100fu, 2u, 1u, 4u, 0u, 0u})
        add(number);
    for (int i = 0; i < 11; ++i)
        add(0);
    for (const std::uint32_t number :
         {32u, 0x41u, 0u, 32u, 0xff0000u, 0xff00u, 0xffu, 0xff000000u, 0x1000u, 0u, 0u, 0u, 0u})
        add(number);
    add(0xffff0000);
    add(0xff0000ff);
    const ReadOutcome outcome = readImageOnQuad(directory.write("a.dds", file));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const auto& texture = dynamic_cast<const osg::Texture2D&>(
        *outcome.scene->getStateSet()->getTextureAttribute(0, osg::StateAttribute::TEXTURE));
    const osg::Geometry& quad = *Geometries(*outcome.scene).found.front();
    const auto& points = dynamic_cast<const osg::Vec3Array&>(*quad.getVertexArray());
    const auto& places = dynamic_cast<const osg::Vec2Array&>(*quad.getTexCoordArray(0));
    for (unsigned int i = 0; i < 4; ++i) {
        const osg::Vec4 color = texture.getImage()->getColor(0u, places[i].y() > 0.5f ? 1u : 0u);
        EXPECT_EQ(points[i].z() > 0, color.r() > color.b()) << i;
    }
}

TEST_F(ModelReader, WhatOnePluginDoesNotReadAssimpDoes)
{
    if (!vfFormats::hasAssimp())
        GTEST_SKIP() << "built without Assimp";
    // A mark at the beginning ends OpenSceneGraph's reading.
    std::ifstream file(vfTest::signpost("ac"), std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const ReadOutcome plain = parseModel(directory.write("plain.ac", text));
    const ReadOutcome marked = parseModel(directory.write("marked.ac", "\xef\xbb\xbf" + text));
    ASSERT_TRUE(plain.scene) << plain.reason;
    ASSERT_TRUE(marked.scene) << marked.reason;
    const osg::BoundingBox expected = boundsOf(*plain.scene);
    const osg::BoundingBox box = boundsOf(*marked.scene);
    EXPECT_NEAR(0, (expected._max - box._max).length(), 1e-3) << "and stands upright";
    EXPECT_NEAR(0, (expected._min - box._min).length(), 1e-3);
}

TEST_F(ModelReader, FacesWithoutAnAreaAreNoModelAndALineIs)
{
    const std::string points = "v 0 0 0\nv 1 2 3\nv -1 -2 -3\n";
    const ReadOutcome flat = parseModel(directory.write("flat.obj", points + "f 1 2 3\n"));
    EXPECT_FALSE(flat.scene);
    EXPECT_EQ("none of its faces has an area", flat.reason);
    EXPECT_TRUE(parseModel(directory.write("line.obj", points + "l 1 2 3\n")).scene);
    EXPECT_TRUE(parseModel(directory.write("both.obj", points + "v 1 0 0\nf 1 2 3\nf 1 2 4\n")).scene);
}

TEST_F(ModelReader, FacesThatAllLieInOnePointAreNoModelAndOnePointIs)
{
    const auto zeros =
        vfFormats::parseModel(directory.write("zeros.obj", "v 1 2 3\nv 1 2 3\nv 1 2 3\nf 1 2 3\n"));
    EXPECT_FALSE(zeros.scene);
    EXPECT_EQ("all of its faces lie in one point", zeros.reason);
    EXPECT_EQ("there is nothing in it that could be shown",
              vfFormats::parseModel(directory.write("zeros.stl", std::string(1000000, '\0'))).reason);
    EXPECT_TRUE(vfFormats::parseModel(directory.write("point.obj", "v 1 2 3\np 1\n")).scene);
}
