// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/formats/internal/SideFileSearch.h>
#include <velaforge/formats/readers/FileGate.h>
#include <velaforge/formats/readers/PlyReader.h>
#include <velaforge/formats/readers/SideFiles.h>

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Texture2D>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::ReadOutcome;
using vfFormats::readPly;
using vfTest::TemporaryDirectory;

namespace {

const std::string place = "property float x\nproperty float y\nproperty float z\n";
const std::string corners = "property list uchar int vertex_indices\n";
const std::string square = "0 0 0\n1 0 0\n1 1 0\n0 1 0\n";

/// Numbers as they stand in a file.
class Bytes
{
public:
    explicit Bytes(bool isBigEndian) : m_isBigEndian(isBigEndian) {}

    template <class Number>
    Bytes& add(std::initializer_list<Number> values)
    {
        for (const Number value : values) {
            char bytes[sizeof(Number)];
            std::memcpy(bytes, &value, sizeof(value));
            if (m_isBigEndian)
                std::reverse(bytes, bytes + sizeof(bytes));
            m_text.append(bytes, sizeof(bytes));
        }
        return *this;
    }

    const std::string& text() const { return m_text; }

private:
    bool m_isBigEndian;
    std::string m_text;
};

class PlyReader : public testing::Test
{
protected:
    PlyReader() { vfFormats::FileGate::install(); }

    const ReadOutcome& readFile(const std::string& contents)
    {
        const std::string path = directory.write("model.ply", contents);
        const vfFormats::SideFiles rule(path, vfFormats::findSideFiles(path));
        outcome = readPly(path);
        return outcome;
    }

    /// Reads a file of text. @param vertices, faces  their number and properties
    const ReadOutcome& read(const std::string& vertices, const std::string& faces, const std::string& body)
    {
        return readFile("ply\nformat ascii 1.0\nelement vertex " + vertices +
                        (faces.empty() ? "" : "element face " + faces) + "end_header\n" + body);
    }

    const osg::Geometry& geometry(unsigned int number = 0) const
    {
        if (!outcome.scene)
            throw std::runtime_error(outcome.reason);
        return *outcome.scene->asGeode()->getDrawable(number)->asGeometry();
    }

    std::size_t triangles() const { return geometry().getPrimitiveSet(0)->getNumIndices() / 3; }

    const osg::Vec3Array& points() const
    {
        return dynamic_cast<const osg::Vec3Array&>(*geometry().getVertexArray());
    }

    const osg::Vec4Array& colors() const
    {
        return dynamic_cast<const osg::Vec4Array&>(*geometry().getColorArray());
    }

    const osg::Vec2Array& coordinates() const
    {
        return dynamic_cast<const osg::Vec2Array&>(*geometry().getTexCoordArray(0));
    }

    TemporaryDirectory directory;
    ReadOutcome outcome;
};

} // namespace

TEST_F(PlyReader, PolygonsOfAnySizeAreWhole)
{
    read("5\n" + place, "1\n" + corners, "0 0 0\n2 0 0\n3 1 0\n1 3 0\n-1 1 0\n5 0 1 2 3 4\n");
    EXPECT_EQ(3u, triangles());
    // Some programs call the list otherwise, and its numbers may be of any kind.
    read("4\n" + place, "1\nproperty list ushort uint vertex_index\n", square + "4 0 1 2 3\n");
    EXPECT_EQ(2u, triangles());
    read("4\n" + place, "1\nproperty list float double corners\n", square + "4 0 1 2 3\n");
    EXPECT_EQ(2u, triangles());
}

TEST_F(PlyReader, ColoursOfEveryTypeAreTheSame)
{
    const std::pair<const char*, const char*> kinds[] = {{"uchar", "255 51 0"},
                                                         {"ushort", "65535 13107 0"},
                                                         {"float", "1 0.2 0"},
                                                         {"double", "255 51 0"},
                                                         {"int", "255 51 0"}};
    for (const auto& [type, values] : kinds) {
        std::string properties = place;
        for (const char* name : {"red", "green", "blue"})
            properties += std::string("property ") + type + " " + name + "\n";
        const std::string row = std::string(" ") + values + "\n";
        read("3\n" + properties, "1\n" + corners,
             "0 0 0" + row + "1 0 0" + row + "0 1 0" + row + "3 0 1 2\n");
        EXPECT_NEAR(1, colors()[0].r(), 0.001) << type;
        EXPECT_NEAR(0.2, colors()[1].g(), 0.001) << type;
        EXPECT_NEAR(0, colors()[2].b(), 0.001) << type;
        EXPECT_NEAR(1, colors()[0].a(), 0.001) << type;
    }
}

TEST_F(PlyReader, FacesMayHaveTheirOwnColours)
{
    read("4\n" + place, "2\n" + corners + "property uchar red\nproperty uchar green\nproperty uchar blue\n",
         square + "3 0 1 2 255 0 0\n3 0 2 3 0 0 255\n");
    ASSERT_EQ(6u, colors().size());
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), colors()[0]);
    EXPECT_EQ(osg::Vec4(0, 0, 1, 1), colors()[5]);
}

TEST_F(PlyReader, TextureCoordinatesHaveManyNames)
{
    for (const char* names : {"s t", "u v", "texture_u texture_v", "tx ty"}) {
        const std::string all = names;
        const std::size_t space = all.find(' ');
        read("3\n" + place + "property float " + all.substr(0, space) + "\nproperty float " +
                 all.substr(space + 1) + "\n",
             "1\n" + corners, "0 0 0 0 0\n1 0 0 1 0\n0 1 0 0.25 0.5\n3 0 1 2\n");
        EXPECT_EQ(osg::Vec2(0.25f, 0.5f), coordinates()[2]) << names;
    }
    read("4\n" + place, "1\n" + corners + "property list uchar float texcoord\n",
         square + "4 0 1 2 3 8 0 0 1 0 1 1 0.25 1\n");
    EXPECT_THAT(coordinates(), testing::Contains(osg::Vec2(0.25f, 1)));
}

TEST_F(PlyReader, ThePictureThatACommentNamesLiesOnTheSurface)
{
    const osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(2, 2, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    ASSERT_TRUE(osgDB::writeImageFile(*image, directory.file("my skin.png")));
    readFile("ply\nformat ascii 1.0\ncomment TextureFile my skin.png\nelement vertex 3\n" + place +
             "property float s\nproperty float t\nelement face 1\n" + corners +
             "end_header\n0 0 0 0 0\n1 0 0 1 0\n0 1 0 0 1\n3 0 1 2\n");
    EXPECT_TRUE(geometry().getStateSet()->getTextureAttribute(0, osg::StateAttribute::TEXTURE));
}

TEST_F(PlyReader, BothOrdersOfBytesAreRead)
{
    for (const bool isBig : {false, true}) {
        Bytes bytes(isBig);
        bytes.add<double>({0, 0, 0}).add<std::uint16_t>({65535});
        bytes.add<double>({1, 0, 0}).add<std::uint16_t>({0});
        bytes.add<double>({0, 2, 0}).add<std::uint16_t>({0});
        bytes.add<std::uint16_t>({3}).add<std::int16_t>({0, 1, 2});
        readFile(std::string("ply\nformat binary_") + (isBig ? "big" : "little") +
                 "_endian 1.0\nelement vertex 3\nproperty double x\nproperty double y\nproperty double z\n"
                 "property ushort quality\nelement face 1\nproperty list ushort short "
                 "vertex_indices\nend_header\n" +
                 bytes.text());
        EXPECT_EQ(1u, triangles()) << isBig;
        EXPECT_EQ(osg::Vec3(0, 2, 0), points()[2]) << isBig;
        EXPECT_THAT(outcome.warnings, IsEmpty());
    }
}

TEST_F(PlyReader, TheFirstLineSaysHowTheLinesOfTheHeaderEnd)
{
    for (const std::string end : {"\n", "\r", "\r\n"}) {
        std::string head =
            "ply\nformat binary_little_endian 1.0\nelement vertex 1\n" + place + "end_header\n";
        for (std::size_t at = head.find('\n'); at != std::string::npos; at = head.find('\n', at + end.size()))
            head.replace(at, 1, end);
        // The first byte of the numbers is a line end as well.
        readFile(head + Bytes(false).add<std::uint32_t>({0x4141410a, 0, 0}).text());
        EXPECT_NEAR(12.0784, points()[0].x(), 0.001) << end.size();
    }
}

TEST_F(PlyReader, StripsEdgesAndCloudsAreShown)
{
    readFile("ply\nformat ascii 1.0\nelement vertex 6\n" + place +
             "element tristrips 1\nproperty list int int vertex_indices\nend_header\n"
             "0 0 0\n0 1 0\n1 0 0\n1 1 0\n2 0 0\n2 1 0\n9 0 1 2 3 -1 3 2 5 4\n");
    EXPECT_EQ(4u, triangles());
    readFile("ply\nformat ascii 1.0\nelement vertex 4\n" + place +
             "element edge 2\nproperty int vertex1\nproperty int vertex2\nend_header\n" + square +
             "0 1\n2 3\n");
    EXPECT_EQ(GLenum(GL_LINES), geometry().getPrimitiveSet(0)->getMode());
    EXPECT_EQ(4u, geometry().getPrimitiveSet(0)->getNumIndices());
    read("4\n" + place, "", square);
    EXPECT_EQ(GLenum(GL_POINTS), geometry().getPrimitiveSet(0)->getMode());
    EXPECT_EQ(4u, geometry().getPrimitiveSet(0)->getNumIndices());
}

TEST_F(PlyReader, PointsThatAreNowhereAreLeftOut)
{
    read("3\n" + place, "", "1 1 1\nnan nan nan\n2 2 2\n");
    EXPECT_EQ(2u, geometry().getPrimitiveSet(0)->getNumIndices());
    EXPECT_EQ(osg::Vec3(1, 1, 1), points()[1]) << "and count for no extent";
}

TEST_F(PlyReader, ACutFileIsShownAsFarAsItGoes)
{
    read("4\n" + place, "2\n" + corners, square + "3 0 1 2\n3 0 2");
    EXPECT_EQ(1u, triangles());
    EXPECT_THAT(outcome.warnings, ElementsAre("the file ends after 1 of 2 rows of \"face\""));
    read("4\n" + place, "2\n" + corners, "0 0 0\n1 0 0\n1 1");
    EXPECT_EQ(2u, points().size());
    EXPECT_THAT(outcome.warnings, ElementsAre("the file ends after 2 of 4 rows of \"vertex\""));
    readFile("ply\nformat ascii 1.0\nelement vertex 4\n");
    EXPECT_THAT(outcome.reason, HasSubstr("cut off in its header"));
}

TEST_F(PlyReader, CountsAreNotBelieved)
{
    for (const char* count : {"4000000000", "18446744073709551615", "99999999999999999999999"}) {
        read(std::string(count) + "\n" + place, "", square);
        EXPECT_EQ(4u, points().size()) << count;
        EXPECT_THAT(outcome.warnings, ElementsAre(HasSubstr("the file ends after 4 of "))) << count;
    }
    const std::string body =
        Bytes(true).add<float>({0, 0, 0, 1, 0, 0}).add<std::uint32_t>({0xfffffff0}).text();
    readFile("ply\nformat binary_big_endian 1.0\nelement vertex 2\n" + place +
             "element face 1000000000\nproperty list uint double vertex_indices\nend_header\n" + body);
    EXPECT_EQ(2u, points().size());
    EXPECT_THAT(outcome.warnings, ElementsAre("the file ends after 0 of 1000000000 rows of \"face\""));
}

TEST_F(PlyReader, FacesOfPointsThatAreNotThereAreLeftAwayAndTold)
{
    read("4\n" + place, "4\n" + corners, square + "3 0 1 2\n3 0 1 4\n3 0 1 -1\n2 0 1\n");
    EXPECT_EQ(1u, triangles());
    EXPECT_THAT(outcome.warnings, ElementsAre("2 faces name points that are not there"));
    EXPECT_THAT(outcome.details, ElementsAre("1 face has less than three corners"));
}

TEST_F(PlyReader, UnknownElementsAndPropertiesArePassedOver)
{
    readFile("ply\nformat ascii 1.0\nobj_info scanned\nelement camera 1\nproperty float focus\nproperty list "
             "uchar int "
             "what\nelement vertex 3\nproperty float confidence\n" +
             place + "property list uchar float more\nelement face 1\nproperty uchar flags\n" + corners +
             "end_header\n1 2 7 7\n9 0 0 0 0\n9 1 0 0 1 5\n9 0 1 0 0\n1 3 0 1 2\n");
    EXPECT_EQ(1u, triangles());
    EXPECT_EQ(osg::Vec3(1, 0, 0), points()[1]);
    EXPECT_THAT(outcome.warnings, IsEmpty());
}

TEST_F(PlyReader, WhereNothingCanBeShownThereIsAReason)
{
    EXPECT_THAT(readFile("hello\n").reason, HasSubstr("damaged"));
    EXPECT_THAT(readFile("ply\nformat ascii 1.0\nproperty float x\nend_header\n").reason,
                HasSubstr("damaged"));
    EXPECT_THAT(readFile("ply\nformat ascii 1.0\nend_header\n").reason, HasSubstr("nothing in it"));
    EXPECT_THAT(read("0\n" + place, "", "").reason, HasSubstr("nothing in it"));
    EXPECT_THAT(read("1\n" + place, "", "nan nan nan\n").reason, HasSubstr("nothing in it"));
}
