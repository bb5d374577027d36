// SPDX-License-Identifier: MIT
// Models that were looked at once look the same ever after.
#include "support/Models.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <osg/Image>
#include <osgDB/ReadFile>

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
