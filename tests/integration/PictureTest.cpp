// SPDX-License-Identifier: MIT
// Models that were looked at once look the same ever after.
#include "support/Gltf.h"
#include "support/Models.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <osg/Image>
#include <osg/ref_ptr>
#include <osgDB/ReadFile>
#include <osgDB/WriteFile>

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using vfTest::signpost;

namespace {

const std::string program = VELAFORGE_PROGRAM_DIR "/vfviewer";
const std::string models = VELAFORGE_SOURCE_DIR "/models/";

struct Case
{
    std::string name;
    std::vector<std::string> arguments;
    std::string needs; ///< a format that not every build reads
};

/// @return how far two pictures of one size are apart, as the mean over all parts of all pixels, from 0 to 255
double difference(const osg::Image& one, const osg::Image& other)
{
    double sum = 0;
    for (int y = 0; y < one.t(); ++y) {
        for (int x = 0; x < one.s(); ++x) {
            const osg::Vec4 a = one.getColor(unsigned(x), unsigned(y));
            const osg::Vec4 b = other.getColor(unsigned(x), unsigned(y));
            for (int part = 0; part < 3; ++part)
                sum += std::abs(double(a[part]) - double(b[part])) * 255 / 3;
        }
    }
    return sum / one.s() / one.t();
}

class Pictures : public testing::TestWithParam<Case>
{
protected:
    void SetUp() override
    {
        const std::string formats = vfTest::runProgram({program, "--list-formats"}).out;
        if (!GetParam().needs.empty() && formats.find(GetParam().needs) == std::string::npos)
            GTEST_SKIP() << "built without " << GetParam().needs;
    }

    /// @return the picture of a run; null when there was none
    osg::ref_ptr<osg::Image> draw(std::vector<std::string> arguments) const
    {
        const std::string path = directory.file(GetParam().name + ".png");
        arguments.insert(arguments.begin(), {program, "--headless", "--size", "160x120", "--snapshot", path});
        const vfTest::Outcome outcome = vfTest::runProgram(arguments);
        EXPECT_EQ(0, outcome.status) << outcome.err;
        return osgDB::readRefImageFile(path);
    }

    vfTest::TemporaryDirectory directory;
};

} // namespace

TEST_P(Pictures, AreAsTheyWere)
{
    const std::string place = VELAFORGE_SOURCE_DIR "/tests/integration/pictures/" + GetParam().name + ".png";
    const osg::ref_ptr<osg::Image> picture = draw(GetParam().arguments);
    ASSERT_TRUE(picture);
    // Kept to be looked at, and to become the reference.
    if (const char* keep = std::getenv("VELAFORGE_KEEP_PICTURES"))
        fs::copy_file(directory.file(GetParam().name + ".png"), fs::path(keep) / (GetParam().name + ".png"),
                      fs::copy_options::overwrite_existing);
    const osg::ref_ptr<osg::Image> reference = osgDB::readRefImageFile(place);
    ASSERT_TRUE(reference) << place;
    ASSERT_EQ(reference->s(), picture->s());
    ASSERT_EQ(reference->t(), picture->t());
    EXPECT_GT(1.0, difference(*reference, *picture));
    // The measure tells the same model from another side apart.
    std::vector<std::string> otherwise = GetParam().arguments;
    otherwise.insert(otherwise.end(), {"--invoke", "vfViewer::ViewBackLeft"});
    const osg::ref_ptr<osg::Image> other = draw(otherwise);
    ASSERT_TRUE(other);
    EXPECT_LT(1.0, difference(*reference, *other));
}

INSTANTIATE_TEST_SUITE_P(
    Models, Pictures,
    testing::Values(
        Case{"sailboat", {models + "sailboat.obj"}, ""}, Case{"lighthouse", {models + "lighthouse.ply"}, ""},
        Case{"rocket", {models + "rocket.dae", "--invoke", "vfViewer::Axes"}, "dae"},
        Case{"king",
             {models + "king.stl", "--invoke", "vfViewer::Orthographic", "--invoke", "vfViewer::SectionX"},
             ""},
        Case{"windmill", {models + "windmill.gltf", "--invoke", "vfViewer::AnimationTime=0.3"}, "gltf"},
        Case{"signpost-3ds", {signpost("3ds")}, ""},
        Case{"signpost-ac", {signpost("ac"), "--invoke", "vfViewer::Grid"}, ""},
        Case{"signpost-x", {signpost("x"), "--invoke", "vfViewer::Wireframe"}, ""}),
    [](const testing::TestParamInfo<Case>& param) {
        std::string name = param.param.name;
        for (char& letter : name)
            letter = letter == '-' ? '_' : letter;
        return name;
    });

namespace {

using vfTest::Gltf;

/// Pictures of small files that are made for a question, and what is in them.
class PicturesOf : public testing::Test
{
protected:
    using Color = osg::Vec4;

    /// Draws a file from the front, on a background of one colour. Its pixels are in "picture".
    void draw(const std::string& file, const std::string& background = "0.8,0.8,0.8",
              const std::vector<std::string>& more = {})
    {
        const std::string path = directory.file("out.png");
        std::vector<std::string> arguments = {program,      "--headless",
                                              "--size",     "160x120",
                                              "--snapshot", path,
                                              "--invoke",   "vfViewer::Background=" + background,
                                              "--invoke",   "vfViewer::ViewFront"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.push_back(file);
        const vfTest::Outcome outcome = vfTest::runProgram(arguments);
        ASSERT_EQ(0, outcome.status) << outcome.err;
        picture = osgDB::readRefImageFile(path);
        ASSERT_TRUE(picture);
    }

    Color at(double x, double y) const
    {
        return picture->getColor(static_cast<unsigned int>(x * (picture->s() - 1)),
                                 static_cast<unsigned int>(y * (picture->t() - 1)));
    }

    static double brightness(const Color& color) { return (color.r() + color.g() + color.b()) / 3; }

    /// @return how many pixels are that much darker than what is behind the model; lighter for a negative number
    int countDarker(double difference) const
    {
        const double behind = brightness(at(0, 0));
        int count = 0;
        for (int y = 0; y < picture->t(); ++y) {
            for (int x = 0; x < picture->s(); ++x) {
                const double here =
                    brightness(picture->getColor(static_cast<unsigned int>(x), static_cast<unsigned int>(y)));
                count += difference > 0 ? behind - here > difference : behind - here < difference;
            }
        }
        return count;
    }

    std::string write(const std::string& name, const std::string& text) const
    {
        return directory.write(name, text);
    }

    vfTest::TemporaryDirectory directory;
    osg::ref_ptr<osg::Image> picture;
};

class PicturesOfGltf : public PicturesOf
{
protected:
    void SetUp() override
    {
        if (vfTest::runProgram({program, "--list-formats"}).out.find("gltf") == std::string::npos)
            GTEST_SKIP() << "built without glTF";
    }
};

/// A square with a lamp before it, and light around it that is black.
constexpr const char* sceneWithLamp = R"(#Ascii Scene
#Version 161
#Generator OpenSceneGraph 3.6.5

osg::Group {
  UniqueID 1
  StateSet TRUE {
    osg::StateSet {
      UniqueID 2
      ModeList 1 {
        GL_LIGHT0 ON
      }
      AttributeList 1 {
        osg::LightModel {
          UniqueID 3
          AmbientIntensity 0 0 0 1
        }
        Value OFF
      }
    }
  }
  Children 2 {
    osg::LightSource {
      UniqueID 4
      Light TRUE {
        osg::Light {
          UniqueID 5
          LightNum 0
          Ambient 0 0 0 1
          Diffuse 0 0 0.3 1
          Specular 0 0 0 1
          Position 0 -1 0 0
        }
      }
    }
    osg::Geometry {
      UniqueID 6
      PrimitiveSetList 1 {
        osg::DrawArrays {
          UniqueID 7
          Mode TRIANGLE_FAN
          Count 4
        }
      }
      VertexArray TRUE {
        osg::Vec3Array {
          UniqueID 8
          Binding BIND_PER_VERTEX
          vector 4 {
            0 0 0
            1 0 0
            1 0 1
            0 0 1
          }
        }
      }
    }
  }
}
)";

constexpr const char* cubeLines = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nl 1 2 3 4 1\nl 1 3\nl 2 4\n";
constexpr const char* cubePoints = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0.5 0.5 0\np 1 2 3 4 5\n";

} // namespace

TEST_F(PicturesOf, LinesAndPointsAreSeenOnLightAndOnDarkBackgrounds)
{
    const std::string lines = write("lines.obj", cubeLines);
    const std::string points = write("points.obj", cubePoints);
    draw(lines, "1,1,1");
    EXPECT_GT(countDarker(0.5), 300);
    draw(lines, "0,0,0");
    EXPECT_GT(countDarker(-0.5), 300);
    draw(points, "0.86,0.9,0.95,0.56,0.64,0.72"); // as it is unless the user sets another
    EXPECT_GT(countDarker(0.3), 50);
    draw(points, "0,0,0");
    EXPECT_GT(countDarker(-0.5), 50);
}

TEST_F(PicturesOf, APointAloneIsSeen)
{
    draw(write("point.obj", "v 7 1 0\np 1\n"), "1,1,1");
    EXPECT_GT(countDarker(0.5), 5);
}

TEST_F(PicturesOf, LinesHaveTheColourOfTheirMaterial)
{
    write("red.mtl", "newmtl red\nKd 1 0 0\n");
    draw(write("lines.obj", std::string("mtllib red.mtl\nusemtl red\n") + cubeLines), "0,0,0");
    const Color middle = at(0.5, 0.5);
    EXPECT_NEAR(1, middle.r(), 0.02);
    EXPECT_NEAR(0, middle.g(), 0.02);
    // So have those that the user colours.
    draw(write("lines.obj", cubeLines), "0.8,0.8,0.8", {"--invoke", "vfViewer::SetColor=0,1,0"});
    EXPECT_NEAR(1, at(0.5, 0.5).g(), 0.02);
    EXPECT_NEAR(0, at(0.5, 0.5).r(), 0.02);
}

TEST_F(PicturesOf, LampsOfAFileShineOnlyWhereTheyAreAskedFor)
{
    const std::string file = write("lamp.osgt", sceneWithLamp);
    draw(file);
    EXPECT_GT(brightness(at(0.5, 0.5)), 0.4);
    for (const std::vector<std::string>& way : {std::vector<std::string>{"--file-lamps"},
                                                std::vector<std::string>{"--invoke", "vfViewer::FileLamps"}})
    {
        draw(file, "0.8,0.8,0.8", way);
        EXPECT_LT(at(0.5, 0.5).r(), 0.1);
        EXPECT_GT(at(0.5, 0.5).b(), 0.15);
    }
}

TEST_F(PicturesOf, NoSideOfAModelIsBlack)
{
    // The material reflects no light from around.
    write("dull.mtl", "newmtl dull\nKa 0 0 0\nKd 0.8 0.8 0.8\n");
    const std::string file =
        write("wall.obj", "mtllib dull.mtl\nusemtl dull\nv 0 0 0\nv 1 0 0\nv 1 0.6 1\nv 0 0.6 1\n"
                          "f 1 2 3 4\n");
    for (const char* light : {"on", "off"}) {
        for (const char* side :
             {"vfViewer::ViewFront", "vfViewer::ViewBack", "vfViewer::ViewBottom", "vfViewer::ViewTop"})
        {
            draw(file, "0,0,0", {"--invoke", std::string("vfViewer::Headlight=") + light, "--invoke", side});
            EXPECT_GT(brightness(at(0.5, 0.5)), 0.05) << light << ' ' << side;
        }
    }
}

TEST_F(PicturesOfGltf, AMirroredPartIsLitLikeTheOther)
{
    Gltf cube = Gltf().floats("POSITION", 3, vfTest::squarePoints());
    cube.nodes(R"({"mesh":0},{"mesh":0,"scale":[-1,1,1],"translation":[2.2,0,0]})", "0,1");
    const std::string file = write("two.gltf", cube.text());
    draw(file);
    EXPECT_NEAR(brightness(at(0.25, 0.5)), brightness(at(0.75, 0.5)), 0.03);
    // And seen from the same side, where back faces are left out.
    draw(file, "0.8,0.8,0.8", {"--invoke", "vfViewer::BackfaceCulling"});
    EXPECT_GT(std::abs(brightness(at(0.25, 0.5)) - 0.8), 0.03);
    EXPECT_GT(std::abs(brightness(at(0.75, 0.5)) - 0.8), 0.03);
}

TEST_F(PicturesOf, APartThatTheUserMirrorsIsLitLikeBefore)
{
    const std::string file = write("tilted.obj", "v 0 0 0\nv 1 0 0\nv 1 1 -0.3\nv 0 1 -0.3\nf 1 2 3 4\n");
    draw(file);
    const double before = brightness(at(0.5, 0.5));
    draw(file, "0.8,0.8,0.8", {"--invoke", "vfViewer::Scale=-1,1,1"});
    EXPECT_NEAR(before, brightness(at(0.5, 0.5)), 0.02);
}

TEST_F(PicturesOfGltf, ColoursOfVerticesAreInThePicture)
{
    Gltf square = Gltf().floats("POSITION", 3, vfTest::squarePoints());
    square.floats("COLOR_0", 3, {1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0, 1});
    draw(write("colors.gltf", square.text()));
    EXPECT_GT(at(0.6, 0.4).r(), 5 * at(0.6, 0.4).b());
    EXPECT_GT(at(0.4, 0.6).b(), 5 * at(0.4, 0.6).r());
}

TEST_F(PicturesOfGltf, WhatIsEmittedShinesInItsPlaceAndNowhereElse)
{
    const osg::ref_ptr<osg::Image> glow = new osg::Image;
    glow->allocateImage(2, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    for (unsigned int i = 0; i < 3; ++i) {
        glow->data(0, 0)[i] = 0;
        glow->data(1, 0)[i] = 255;
    }
    ASSERT_TRUE(osgDB::writeImageFile(*glow, directory.file("glow.png")));
    Gltf square = Gltf().floats("POSITION", 3, vfTest::squarePoints());
    square.floats("TEXCOORD_0", 2, vfTest::squarePlaces())
        .material(R"("pbrMetallicRoughness":{"baseColorFactor":[0.05,0.05,0.2,1]},)"
                  R"("emissiveFactor":[1,1,1],"emissiveTexture":{"index":0})")
        .more(
            R"(,"textures":[{"source":0,"sampler":0}],"samplers":[{"magFilter":9728}],"images":[{"uri":"glow.png"}])");
    draw(write("glow.gltf", square.text()), "0,0,0");
    EXPECT_NEAR(1, brightness(at(0.62, 0.5)), 0.02);
    EXPECT_LT(brightness(at(0.38, 0.5)), 0.5);
    EXPECT_GT(brightness(at(0.38, 0.5)), 0.1);
}
