// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/StlReader.h>

#include "support/TemporaryDirectory.h"

#include <osg/Geode>
#include <osg/Geometry>

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>

using testing::ElementsAre;
using testing::HasSubstr;
using vfFormats::ReadOutcome;
using vfFormats::readStl;
using vfTest::TemporaryDirectory;

namespace {

class StlReader : public testing::Test
{
protected:
    struct Triangle
    {
        osg::Vec3 normal, a, b, c;
        std::uint16_t spare;
    };

    ReadOutcome read(const std::string& contents) const
    {
        return readStl(directory.write("model.stl", contents));
    }

    static std::string numbers(const std::vector<Triangle>& triangles, std::string header = "made by hand")
    {
        header.resize(80);
        const auto count = static_cast<std::uint32_t>(triangles.size());
        header.append(reinterpret_cast<const char*>(&count), 4);
        for (const Triangle& triangle : triangles) {
            for (const osg::Vec3& vector : {triangle.normal, triangle.a, triangle.b, triangle.c})
                header.append(reinterpret_cast<const char*>(vector.ptr()), 12);
            header.append(reinterpret_cast<const char*>(&triangle.spare), 2);
        }
        return header;
    }

    static const osg::Geometry& geometry(const ReadOutcome& outcome, unsigned int index = 0)
    {
        return *outcome.scene->asGroup()->getChild(index)->asGeode()->getDrawable(0)->asGeometry();
    }

    template <class Array>
    static const Array& as(const osg::Array* array)
    {
        return dynamic_cast<const Array&>(*array);
    }

    TemporaryDirectory directory;
};

const osg::Vec3 x(1, 0, 0);
const osg::Vec3 y(0, 1, 0);
const osg::Vec3 z(0, 0, 1);
const osg::Vec3 origin(0, 0, 0);

} // namespace

TEST_F(StlReader, TakesNumbersAndWorksOutTheNormals)
{
    const ReadOutcome outcome = read(numbers({{origin, origin, x, y, 0}, {x, z, x + z, y + z, 0}}));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(as<osg::Vec3Array>(geometry(outcome).getVertexArray()),
                ElementsAre(origin, x, y, z, x + z, y + z));
    EXPECT_THAT(as<osg::Vec3Array>(geometry(outcome).getNormalArray()), ElementsAre(z, z, z, z, z, z))
        << "whatever the file says of them";
    EXPECT_EQ(nullptr, geometry(outcome).getColorArray());
    EXPECT_EQ(6u, geometry(outcome).getPrimitiveSet(0)->getNumIndices());
}

TEST_F(StlReader, ATriangleWithoutAnAreaHasTheNormalOfTheFile)
{
    const ReadOutcome outcome = read(numbers({{y * 3, x, x, x, 0}, {origin, x, x, x, 0}}));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(y, as<osg::Vec3Array>(geometry(outcome).getNormalArray())[0]);
    EXPECT_EQ(z, as<osg::Vec3Array>(geometry(outcome).getNormalArray())[3]);
}

TEST_F(StlReader, TakesTextOfSeveralSolidsAsParts)
{
    const ReadOutcome outcome =
        read("solid left side\n facet normal 0 0 1\n  outer loop\n   vertex 0 0 0\n"
             "   vertex 1 0 0\r\n   vertex 0 1e0 0\n  endloop\n endfacet\nendsolid left side\n"
             "solid\nfacet normal 0 0 0\nouter loop\nvertex 0 0 1\nvertex +1 0 1\n"
             "vertex 1 1 1\nvertex 0 1 1\nendloop\nendfacet\nendsolid\n");
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    ASSERT_EQ(2u, outcome.scene->asGroup()->getNumChildren());
    EXPECT_EQ("left side", outcome.scene->asGroup()->getChild(0)->getName());
    EXPECT_THAT(as<osg::Vec3Array>(geometry(outcome).getVertexArray()), ElementsAre(origin, x, y));
    EXPECT_EQ(6u, geometry(outcome, 1).getVertexArray()->getNumElements()) << "a square is two triangles";
}

TEST_F(StlReader, NumbersThatBeginWithTheWordOfTextAreNumbers)
{
    const ReadOutcome outcome = read(numbers({{z, origin, x, y, 0}}, "solid or not, there are numbers"));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_EQ(3u, geometry(outcome).getVertexArray()->getNumElements());
}

TEST_F(StlReader, TrianglesMayHaveColoursInTheirSpareBytes)
{
    const ReadOutcome outcome = read(numbers({{z, origin, x, y, 0x8000 | 31 << 10}, {z, origin, x, y, 0}}));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const auto& colors = as<osg::Vec4Array>(geometry(outcome).getColorArray());
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), colors[2]);
    EXPECT_EQ(osg::Vec4(0.8f, 0.8f, 0.8f, 1), colors[3]) << "as all have that have none";
}

TEST_F(StlReader, WhereTheHeaderNamesAColourTheBytesAreTheOtherWayRound)
{
    const std::string header = std::string("COLOR=") + '\0' + '\xff' + '\0' + '\xff';
    const ReadOutcome outcome = read(numbers({{z, origin, x, y, 31}, {z, origin, x, y, 0x8000}}, header));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    const auto& colors = as<osg::Vec4Array>(geometry(outcome).getColorArray());
    EXPECT_EQ(osg::Vec4(1, 0, 0, 1), colors[0]);
    EXPECT_EQ(osg::Vec4(0, 1, 0, 1), colors[3]) << "the colour of the whole";
}

TEST_F(StlReader, WhereNothingCanBeShownThereIsAReason)
{
    EXPECT_THAT(read("solid nothing\nendsolid\n").reason, HasSubstr("nothing in it"));
    EXPECT_THAT(read(numbers({})).reason, HasSubstr("nothing in it"));
    EXPECT_THAT(read("hello").reason, HasSubstr("damaged"));
    EXPECT_THAT(read("solid a\nfacet normal\nvertex 1\nvertex a b c\nendloop\n").reason,
                HasSubstr("nothing in it"));
}

TEST_F(StlReader, TextIsReadWhateverItsLinesAndCapitals)
{
    const std::string facet =
        "facet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\n";
    const std::string text = "solid a part\n" + facet + facet + "endsolid a part\n";
    const auto changed = [&text](auto change) {
        std::string made = text;
        std::transform(made.begin(), made.end(), made.begin(), change);
        return made;
    };
    const std::pair<const char*, std::string> forms[] = {
        {"a mark", "\xef\xbb\xbf" + text},
        {"blank lines", "\n\n  " + text},
        {"capitals", changed([](unsigned char letter) { return static_cast<char>(std::toupper(letter)); })},
        {"one line", changed([](char letter) { return letter == '\n' ? ' ' : letter; })},
        {"old line ends", changed([](char letter) { return letter == '\n' ? '\r' : letter; })},
        {"a long name", "solid " + std::string(2000, 'a') + text.substr(12)},
        {"no solid", facet + facet},
    };
    for (const auto& [name, contents] : forms) {
        const ReadOutcome outcome = read(contents);
        ASSERT_TRUE(outcome.scene) << name << outcome.reason;
        EXPECT_EQ(6u, geometry(outcome).getVertexArray()->getNumElements()) << name;
        EXPECT_THAT(outcome.warnings, testing::IsEmpty()) << name;
    }
    EXPECT_THAT(read(text.substr(0, text.find("endsolid"))).warnings, ElementsAre(HasSubstr("endsolid")));
}

TEST_F(StlReader, NumbersBehindTheLastTriangleAreNone)
{
    for (const char* header : {"plain", "solid with a facet in its header"}) {
        const ReadOutcome outcome = read(numbers({{z, origin, x, y, 0}}, header) + std::string(70, 'x'));
        ASSERT_TRUE(outcome.scene) << outcome.reason;
        EXPECT_EQ(3u, geometry(outcome).getVertexArray()->getNumElements());
    }
}
