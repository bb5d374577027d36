// SPDX-License-Identifier: MIT
// The real program, from the command line to the picture.
#include "support/Models.h"
#include "support/Process.h"
#include "support/TemporaryDirectory.h"

#include <osg/Image>
#include <osg/Vec3d>
#include <osgDB/ReadFile>

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using vfTest::Outcome;
using vfTest::signpost;
using vfTest::TemporaryDirectory;

namespace {

Outcome view(std::vector<std::string> arguments, const std::string& directory = std::string())
{
    arguments.insert(arguments.begin(), VELAFORGE_PROGRAM_DIR "/vfviewer");
    return vfTest::runProgram(arguments, directory);
}

int lines(const std::string& text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

/// What can be measured in a picture; positions from 0 to 1, from the left and from the bottom.
struct Picture
{
    explicit Picture(const std::string& path) : image(osgDB::readRefImageFile(path))
    {
        if (!image)
            return;
        width = image->s();
        height = image->t();
        std::set<unsigned> colors;
        double brightness = 0;
        for (int y = 0; y < height; ++y) {
            const osg::Vec4 background = at(0, y);
            for (int x = 0; x < width; ++x) {
                const osg::Vec4 color = at(x, y);
                if ((color - background).length() < 0.08f)
                    continue;
                ++model;
                (y < height / 2 ? lower : upper) += 1;
                left = std::min(left, (x + 0.5) / width);
                right = std::max(right, (x + 0.5) / width);
                bottom = std::min(bottom, (y + 0.5) / height);
                top = std::max(top, (y + 0.5) / height);
                colors.insert(color.asRGBA());
                brightness += (color.r() + color.g() + color.b()) / 3;
            }
        }
        colorCount = static_cast<int>(colors.size());
        meanBrightness = model ? brightness / model : 0;
    }

    osg::Vec4 at(int x, int y) const
    {
        return image->getColor(static_cast<unsigned>(x), static_cast<unsigned>(y));
    }

    osg::ref_ptr<osg::Image> image;
    int width = 0;
    int height = 0;
    int model = 0; ///< pixels that are not background
    int lower = 0;
    int upper = 0;
    double left = 1;
    double right = 0;
    double bottom = 1;
    double top = 0;
    int colorCount = 0;
    double meanBrightness = 0;
};

} // namespace

class EveryFormat : public testing::TestWithParam<std::string>
{};

TEST_P(EveryFormat, StandsUprightLitCentredAndFillsMostOfTheFrame)
{
    const TemporaryDirectory directory;
    const std::string file = directory.file("out.png");
    const Outcome outcome =
        view({"--headless", "--size", "640x480", "--snapshot", file, signpost(GetParam())});
    ASSERT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ("vfviewer: No data loaded for " + signpost(GetParam()) + "\n", outcome.out);
    const Picture picture(file);
    ASSERT_EQ(640, picture.width);
    ASSERT_EQ(480, picture.height);
    EXPECT_GT(picture.lower, 1.5 * picture.upper) << "the broad foot is below";
    EXPECT_GT(picture.top - picture.bottom, 0.80);
    EXPECT_LT(picture.top - picture.bottom, 0.95);
    EXPECT_NEAR(0.5, 0.5 * (picture.left + picture.right), 0.02);
    EXPECT_NEAR(0.5, 0.5 * (picture.bottom + picture.top), 0.02);
    EXPECT_GT(picture.colorCount, 10) << "sides are lit differently";
    EXPECT_GT(picture.meanBrightness, 0.18);
    EXPECT_LT(picture.meanBrightness, 0.85);
}

INSTANTIATE_TEST_SUITE_P(Viewer, EveryFormat, testing::ValuesIn(vfTest::signpostFormats()),
                         [](const auto& format) { return format.param; });

TEST(Viewer, ListsTheFormatsThatItReadsAndWrites)
{
    const Outcome outcome = view({"--list-formats"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("", outcome.err);
    for (const std::string& format : vfTest::signpostFormats())
        EXPECT_THAT(outcome.out, testing::ContainsRegex("(^|\n)" + format + " +read")) << format;
    EXPECT_THAT(outcome.out, HasSubstr("obj       read, written   Wavefront OBJ\n"));
    EXPECT_THAT(outcome.out, HasSubstr("png       read            image\n"));
    EXPECT_THAT(view({"--help"}).out, HasSubstr("--list-formats"));
}

TEST(Viewer, ReadsTextStlToo)
{
    const TemporaryDirectory directory;
    const std::string file = directory.file("out.png");
    const Outcome outcome = view({"--size", "200x200", "--snapshot", file,
                                  VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/signpost-text.stl"});
    ASSERT_EQ(0, outcome.status) << outcome.err;
    EXPECT_GT(Picture(file).lower, 1.5 * Picture(file).upper);
}

TEST(Viewer, TheArmOfTheSignpostPointsToTheRightSeenFromTheFront)
{
    const TemporaryDirectory directory;
    for (const std::string& format : vfTest::signpostFormats()) {
        const std::string file = directory.file(format + ".png");
        ASSERT_EQ(
            0, view({"--size", "300x300", "--defaultCameraView", "0", "--snapshot", file, signpost(format)})
                   .status);
        const Picture picture(file);
        // Above the middle there is more to the right of the middle axis than to the left.
        int leftSide = 0;
        int rightSide = 0;
        for (int y = 200; y < 250; ++y) {
            for (int x = 0; x < 300; ++x) {
                if ((picture.at(x, y) - picture.at(0, y)).length() > 0.08f)
                    ++(x < 150 ? leftSide : rightSide);
            }
        }
        EXPECT_GT(rightSide, 1.5 * leftSide) << format;
    }
}

TEST(Viewer, TheTenViewsGiveTenDifferentPictures)
{
    const TemporaryDirectory directory;
    std::vector<std::string> pictures;
    for (int number = 0; number < 10; ++number) {
        const std::string file = directory.file(std::to_string(number) + ".png");
        ASSERT_EQ(0, view({"--size", "120x120", "--defaultCameraView", std::to_string(number), "--snapshot",
                           file, VELAFORGE_SOURCE_DIR "/models/sailboat.obj"})
                         .status);
        const Picture picture(file);
        EXPECT_GT(picture.model, 300) << number;
        EXPECT_NEAR(0.5, 0.5 * (picture.left + picture.right), 0.03) << number;
        EXPECT_NEAR(0.5, 0.5 * (picture.bottom + picture.top), 0.03) << number;
        pictures.push_back(vfTest::readFile(file));
        for (int other = 0; other < number; ++other)
            EXPECT_NE(pictures[static_cast<unsigned>(other)], pictures.back()) << other << " and " << number;
    }
}

TEST(Viewer, ShowsAnImageOnAQuadTheRightWayUp)
{
    const TemporaryDirectory directory;
    const std::string file = directory.file("out.png");
    const Outcome outcome = view({"--image", VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/quarters.png",
                                  "--size", "320x240", "--snapshot", file});
    ASSERT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ("", outcome.out);
    const Picture picture(file);
    const osg::Vec4 red = picture.at(80, 180);
    const osg::Vec4 green = picture.at(240, 180);
    const osg::Vec4 blue = picture.at(80, 60);
    const osg::Vec4 yellow = picture.at(240, 60);
    EXPECT_TRUE(red.r() > 0.8f && red.g() < 0.3f);
    EXPECT_TRUE(green.g() > 0.6f && green.r() < 0.3f);
    EXPECT_TRUE(blue.b() > 0.7f && blue.r() < 0.3f);
    EXPECT_TRUE(yellow.r() > 0.8f && yellow.g() > 0.7f && yellow.b() < 0.3f);
}

TEST(Viewer, TexturesAreSeen)
{
    const TemporaryDirectory directory;
    const std::string file = directory.file("out.png");
    ASSERT_EQ(0, view({"--size", "400x400", "--defaultCameraView", "0", "--snapshot", file,
                       VELAFORGE_SOURCE_DIR "/models/sailboat.obj"})
                     .status);
    const Picture picture(file);
    int red = 0;
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 400; ++x) {
            const osg::Vec4 color = picture.at(x, y);
            red += color.r() > 0.55f && color.g() < 0.25f && color.b() < 0.25f;
        }
    }
    EXPECT_GT(red, 500) << "the stripe of the sail";
}

TEST(Viewer, OpensSeveralFilesInOrderAndTheLastIsShown)
{
    const Outcome outcome = view({signpost("obj"), signpost("stl"), signpost("ply")});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("vfviewer: No data loaded for " + signpost("obj") + "\nvfviewer: No data loaded for " +
                  signpost("stl") + "\nvfviewer: No data loaded for " + signpost("ply") + "\n",
              outcome.out);
}

TEST(Viewer, OneModelGivesOnePictureEachTime)
{
    const TemporaryDirectory directory;
    const std::string first = directory.file("a.png");
    const std::string second = directory.file("b.png");
    ASSERT_EQ(0, view({"--size", "333x77", "--snapshot", first, signpost("obj")}).status);
    ASSERT_EQ(0, view({"--size", "333x77", "--snapshot", second, signpost("obj")}).status);
    EXPECT_EQ(vfTest::readFile(first), vfTest::readFile(second));
    EXPECT_EQ(333, Picture(first).width);
}

TEST(Viewer, WithoutAFileItSaysWhereHelpIs)
{
    const Outcome outcome = view({});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("", outcome.out);
    EXPECT_THAT(outcome.err, HasSubstr("--help"));
    EXPECT_EQ(1, lines(outcome.err));
    EXPECT_THAT(view({"--headless", signpost("stl")}).err, testing::Not(HasSubstr("--help")));
}

TEST(Viewer, HelpGoesToStandardOutputWithStatus1)
{
    const Outcome outcome = view({"--help"});
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ("", outcome.err);
    for (const char* option :
         {"--headless", "--snapshot <file>", "--size <width>x<height>", "--image <filename>",
          "--defaultCameraView <standard view kind [0,9]>", "--verbose", "--log", "--help"})
        EXPECT_THAT(outcome.out, HasSubstr(option));
}

TEST(Viewer, MistakesOnTheCommandLineAreStatus2BeforeAnythingIsOpened)
{
    for (const std::vector<std::string>& mistake : {std::vector<std::string>{"--size", "abc"},
                                                    {"--size", "0x5"},
                                                    {"--size"},
                                                    {"--defaultCameraView", "10"},
                                                    {"--defaultCameraView", "-1"},
                                                    {"--defaultCameraView", "x"},
                                                    {"--snapshot"},
                                                    {"--image"},
                                                    {"--snapshot", "a.xyz"}})
    {
        std::vector<std::string> arguments = {signpost("obj")};
        arguments.insert(arguments.end(), mistake.begin(), mistake.end());
        const Outcome outcome = view(arguments);
        EXPECT_EQ(2, outcome.status) << mistake[0];
        EXPECT_EQ("", outcome.out) << mistake[0];
        EXPECT_EQ(1, lines(outcome.err)) << outcome.err;
        EXPECT_THAT(outcome.err, StartsWith("vfviewer: ")) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr(mistake[0]));
    }
}

TEST(Viewer, AnUnknownOptionIsStatus3AfterTheFilesWereOpened)
{
    const Outcome outcome = view({"--nonsense", signpost("obj")});
    EXPECT_EQ(3, outcome.status);
    EXPECT_THAT(outcome.out, HasSubstr("No data loaded for"));
    EXPECT_THAT(outcome.err, HasSubstr("vfviewer: unknown option \"--nonsense\"\n"));
}

TEST(Viewer, AFileThatCannotBeOpenedIsStatus4WithOneLineAndTheOthersAreOpened)
{
    const TemporaryDirectory directory;
    mkdir(directory.file("directory.obj").c_str(), 0700);
    mkfifo(directory.file("fifo.obj").c_str(), 0600);
    const std::string whole = vfTest::readFile(signpost("stl"));
    const std::pair<std::string, std::string> cases[] = {
        {directory.file("missing.obj"), "No such file or directory"},
        {directory.file("directory.obj"), "it is a directory"},
        {directory.file("fifo.obj"), "it is not a regular file"},
        {directory.write("empty.obj", ""), "the file is empty"},
        {directory.write("model.xyz", "x"), "not a format that can be read"},
        {directory.write("noextension", "x"), "not a format that can be read"},
        {directory.write("nonsense.obj", "hello\n"), "damaged"},
        {directory.write("nonsense.osgb", "hello\n"), "damaged"},
        {directory.write("cut.stl", whole.substr(0, whole.size() / 2)), "the file is cut off"},
        {"http://localhost/a.obj", "No such file or directory"},
    };
    for (const auto& [path, reason] : cases) {
        const Outcome outcome = view({path, signpost("obj")});
        EXPECT_EQ(4, outcome.status) << path;
        EXPECT_EQ("vfviewer: No data loaded for " + signpost("obj") + "\n", outcome.out) << path;
        EXPECT_THAT(outcome.err, StartsWith("vfviewer: " + path + ": ")) << path;
        EXPECT_THAT(outcome.err, HasSubstr(reason)) << path;
        EXPECT_EQ(2, lines(outcome.err)) << outcome.err; // and "Model loaded in" of the other
        EXPECT_THAT(outcome.err, testing::Not(HasSubstr("xception"))) << path;
    }
}

TEST(Viewer, NamesWithBlanksLineBreaksAndForeignBytesAreOpenedAndTold)
{
    const TemporaryDirectory directory;
    const std::string name = directory.write("a b\nc\xFF\xFE.stl", vfTest::readFile(signpost("stl")));
    const std::string picture = directory.file("p q\n\xFF.png");
    const Outcome outcome = view({name, "--size", "50x50", "--snapshot", picture});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ("vfviewer: No data loaded for " + name + "\n", outcome.out);
    EXPECT_THAT(outcome.err, HasSubstr("p q\\n\\xFF.png"));
    EXPECT_EQ(50, Picture(picture).width);
    const Outcome missing = view({directory.file("x\n\xFF.obj")});
    EXPECT_THAT(missing.err, HasSubstr("x\\n\\xFF.obj: No such file or directory\n"));
    EXPECT_EQ(1, lines(missing.err));
}

TEST(Viewer, ListsItsMenusToolbarsDockWindowsAndOptionsPages)
{
    const Outcome outcome = view({"--headless", "--list-ui"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("menus\n  File\n    vfApplicationQt::ActionOpen"));
    EXPECT_THAT(outcome.out, HasSubstr("\n    Look from\n      vfViewer::ViewFront\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\n    -\n    vfViewer::PrintStatistics\n")); // the library's
    EXPECT_THAT(outcome.out, HasSubstr("\ntoolbars\n  Standard\n"));
    EXPECT_THAT(outcome.out, HasSubstr("dock windows\n  vfViewer::SceneTree \"Scene\", left\n  "
                                       "vfViewer::Properties \"Properties\", right, hidden\n"
                                       "  vfViewer::Sections \"Sections\", right, hidden\n"
                                       "  vfViewer::Animation \"Animation\", right, hidden\n"
                                       "  vfViewer::Measurements \"Measurements\", right, hidden\n"
                                       "  vfViewer::Messages \"Messages\", right, hidden\n"
                                       "  vfViewer::Statistics \"Statistics\", right, hidden\n"));
    EXPECT_THAT(outcome.out, testing::EndsWith("options pages\n"
                                               "  General\n    vfViewer::RecentFilesPage\n"
                                               "  Pictures\n    vfViewer::PicturePage\n"
                                               "  Models\n    vfViewer::ModelPage\n"
                                               "  Mouse\n    vfViewer::MousePage\n"));
}

TEST(Viewer, InvokesCommandsInOrderAndThenTakesThePicture)
{
    const TemporaryDirectory directory;
    const std::string plain = directory.file("plain.png");
    const std::string changed = directory.file("changed.png");
    const std::string undone = directory.file("undone.png");
    EXPECT_EQ(0, view({"--snapshot", plain, signpost("obj")}).status);
    Outcome outcome = view({"--invoke", "vfViewer::SelectNext", "--invoke=vfViewer::SetColor=1,0,0",
                            "--invoke", "vfViewer::ViewTop", "--snapshot", changed, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    outcome = view({"--invoke", "vfViewer::SelectNext", "--invoke", "vfViewer::Remove", "--invoke",
                    "vfViewer::ViewTop", "--invoke", "vfViewer::Undo", "--invoke", "vfViewer::ViewFrontRight",
                    "--snapshot", undone, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_NE(vfTest::readFile(plain), vfTest::readFile(changed));
    EXPECT_EQ(vfTest::readFile(plain), vfTest::readFile(undone));
}

TEST(Viewer, TheCameraThatIsPlacedIsTheOneOfThePictureAndFitKeepsItsDirection)
{
    const TemporaryDirectory directory;
    const std::string placed = directory.file("placed.png");
    const std::string fitted = directory.file("fitted.png");
    const std::string camera = "vfViewer::Camera=10,-60,5,0,0,0,0,0,1";
    Outcome outcome = view({"--headless", "--invoke", camera, "--invoke", "vfViewer::PrintCamera",
                            "--snapshot", placed, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(camera + "\n"));
    outcome = view({"--headless", "--invoke", camera, "--invoke", "vfViewer::Fit", "--invoke",
                    "vfViewer::PrintCamera", "--snapshot", fitted, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    std::string numbers = outcome.out.substr(outcome.out.find('=') + 1);
    std::replace(numbers.begin(), numbers.end(), ',', ' ');
    std::istringstream text(numbers);
    osg::Vec3d eye;
    osg::Vec3d centre;
    ASSERT_TRUE(text >> eye.x() >> eye.y() >> eye.z() >> centre.x() >> centre.y() >> centre.z())
        << outcome.out;
    osg::Vec3d direction = centre - eye;
    osg::Vec3d before(-10, 60, -5);
    EXPECT_LT(0.1, std::fabs(direction.length() - before.length()));
    direction.normalize();
    before.normalize();
    EXPECT_LT(0.999999, direction * before);
    EXPECT_GT(0.5, std::fabs(Picture(placed).top - Picture(placed).bottom));
    EXPECT_LT(0.8, std::fabs(Picture(fitted).top - Picture(fitted).bottom));
}

TEST(Viewer, ACommandOfItsModuleLibraryTellsWhatTheModelConsistsOf)
{
    const Outcome outcome = view({"--invoke", "vfViewer::PrintStatistics", signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("signpost.obj: "));
    EXPECT_THAT(outcome.out,
                testing::ContainsRegex("[1-9][0-9]* triangles and [1-9][0-9]* vertices in [1-9]"));
}

TEST(Viewer, AnUnknownCommandIsStatus4WithTheNearestNameAndNoneIsRun)
{
    const TemporaryDirectory directory;
    const std::string picture = directory.file("picture.png");
    const Outcome outcome = view({"--invoke", "vfViewer::PrintStatistics", "--invoke", "vfViewer::Hid",
                                  "--snapshot", picture, signpost("obj")});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("vfviewer: vfViewer::Hid: there is no such command; did you mean "
                                       "vfViewer::Hide?\n"));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr("triangles")));
    EXPECT_NE(0, access(picture.c_str(), F_OK));
}

TEST(Viewer, ACommandThatFailsIsStatus4AndThoseBehindItAreNotRun)
{
    Outcome outcome =
        view({"--invoke", "vfViewer::Move", "--invoke", "vfViewer::PrintStatistics", signpost("obj")});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("an offset is needed"));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr("triangles")));
    outcome = view({"--invoke", "vfViewer::Undo", signpost("obj")});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("there is nothing to undo"));
    outcome = view({"--invoke", "vfViewer::Hide"});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("vfViewer::Hide: there is no document for the command"));
    EXPECT_EQ(2, view({"--invoke"}).status);
}

TEST(Viewer, ACommandThatIsNoChangeTellsItsFailureAndThoseBehindItAreRun)
{
    const Outcome outcome = view({"--invoke", "vfViewer::SaveAs=/none/copy.stl", "--invoke",
                                  "vfViewer::PrintStatistics", signpost("obj")});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("/none/copy.stl: No such file or directory"));
    EXPECT_THAT(outcome.out, HasSubstr("triangles"));
}

TEST(Viewer, ConvertsAModelByACommand)
{
    const TemporaryDirectory directory;
    const std::string copy = directory.file("copy.ply.stl");
    const Outcome outcome = view({"--invoke", "vfViewer::SaveAs=" + copy, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ(0, view({"--snapshot", directory.file("copy.png"), copy}).status);
}

#ifdef VELAFORGE_WITH_QT
TEST(Viewer, ADisplayThatDoesNotAnswerIsOneLineAndStatus1)
{
    setenv("DISPLAY", ":9876", 1);
    const Outcome outcome = view({signpost("obj")});
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ("vfviewer: the display :9876 does not answer; --headless works without a display\n",
              outcome.err);
    EXPECT_EQ(0, view({"--headless", signpost("obj")}).status);
    const TemporaryDirectory directory;
    EXPECT_EQ(0, view({"--snapshot", directory.file("out.png"), signpost("obj")}).status);
    EXPECT_EQ(1, view({"--help"}).status);
}
#endif

TEST(Viewer, ATurntableGivesNumberedPicturesAllAround)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("turn.png");
    ASSERT_EQ(0,
              view({"--snapshot", picture, "--size", "60x60", "--turntable", "3", signpost("obj")}).status);
    std::set<std::string> pictures;
    for (const char* name : {"turn-000.png", "turn-001.png", "turn-002.png"})
        pictures.insert(vfTest::readFile(directory.file(name)));
    EXPECT_EQ(3u, pictures.size());
    EXPECT_EQ(0u, pictures.count(""));
    EXPECT_FALSE(std::filesystem::exists(picture));
    EXPECT_FALSE(std::filesystem::exists(directory.file("turn-003.png")));
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--turntable", "3"},
                                                  {"--snapshot", picture, "--turntable", "0"},
                                                  {"--snapshot", picture, "--turntable", "10001"},
                                                  {"--snapshot", picture, "--turntable", "x"}})
    {
        const Outcome outcome = view(wrong);
        EXPECT_EQ(2, outcome.status);
        EXPECT_THAT(outcome.err, HasSubstr("--turntable"));
    }
}

TEST(Viewer, ASnapshotCanBeSeenThrough)
{
    const vfTest::TemporaryDirectory directory;
    const std::string picture = directory.file("a.png");
    ASSERT_EQ(0, view({"--snapshot", picture, "--size", "60x60", "--transparent", signpost("obj")}).status);
    const osg::ref_ptr<osg::Image> image = osgDB::readRefImageFile(picture);
    ASSERT_TRUE(image);
    EXPECT_EQ(static_cast<GLenum>(GL_RGBA), image->getPixelFormat());
    EXPECT_EQ(0, image->getColor(0u, 0u).a());
    EXPECT_EQ(1, image->getColor(30u, 30u).a());
    const Outcome outcome = view({"--snapshot", directory.file("a.jpg"), "--transparent", signpost("obj")});
    EXPECT_EQ(2, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("this image format has no transparency"));
}

TEST(Viewer, AScriptRunsItsCommandsWithoutADisplayAndEndsAtTheFirstThatFails)
{
    const vfTest::TemporaryDirectory directory;
    const std::string copy = directory.file("copy.osgb");
    const std::string picture = directory.file("a.png");
    const std::string script =
        directory.write("all.script", "# opens, changes, keeps\n\nvfViewer::Open=" + signpost("obj") +
                                          "\n  vfViewer::Grid=on  \r\nvfViewer::Scale=2\n"
                                          "vfViewer::SavePicture=50x40 " +
                                          picture + "\nvfViewer::SaveAs=" + copy);
    Outcome outcome = view({"--script", script});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_THAT(outcome.err, Not(HasSubstr("vfviewer:")));
    const osg::ref_ptr<osg::Image> image = osgDB::readRefImageFile(picture);
    ASSERT_TRUE(image);
    EXPECT_EQ(50, image->s());
    EXPECT_EQ(40, image->t());
    EXPECT_TRUE(std::filesystem::exists(copy));

    // The first failure is the last thing that is done; what was done stays done.
    const std::string second = directory.file("b.png");
    const std::string failing = directory.write(
        "failing.script", "vfViewer::Open=" + signpost("obj") + "\nvfViewer::SavePicture=" + second +
                              "\nvfViewer::Undo\nvfViewer::SavePicture=" + directory.file("c.png") + "\n");
    outcome = view({"--script", failing});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("there is nothing to undo\n"));
    EXPECT_THAT(outcome.err, HasSubstr("vfviewer: " + failing +
                                       ":3: vfViewer::Undo: the command could not be carried out\n"));
    EXPECT_TRUE(std::filesystem::exists(second));
    EXPECT_FALSE(std::filesystem::exists(directory.file("c.png")));

    // With a name that is wrong nothing is begun.
    const std::string wrong =
        directory.write("wrong.script", "vfViewer::Open=" + signpost("obj") + "\nvfViewer::SavePicture=" +
                                            directory.file("d.png") + "\n\nvfViewer::Flt\n");
    outcome = view({"--script", wrong});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(
        outcome.err,
        HasSubstr(wrong + ":4: vfViewer::Flt: there is no such command; did you mean vfViewer::Fit?"));
    EXPECT_FALSE(std::filesystem::exists(directory.file("d.png")));
    const std::string none = directory.write("none.script", "vfViewer::Fit\n");
    outcome = view({"--script", none});
    EXPECT_EQ(4, outcome.status);
    EXPECT_EQ("vfviewer: " + none + ":1: vfViewer::Fit: there is no document for the command\n", outcome.err);
    const std::string missing =
        directory.write("missing.script", "vfViewer::Open=/none.obj\nvfViewer::Fit\n");
    outcome = view({"--script", missing});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("/none.obj: No such file or directory\n"));
}

TEST(Viewer, AScriptThatCannotBeReadIsOneLine)
{
    const vfTest::TemporaryDirectory directory;
    for (const auto& [path, reason] :
         {std::pair<std::string, std::string>{directory.file("none"), "No such file or directory"},
          {directory.path(), "Is a directory"}})
    {
        const Outcome outcome = view({"--script", path});
        EXPECT_EQ(4, outcome.status);
        EXPECT_EQ(std::string("vfviewer: ").append(path).append(": ").append(reason) + "\n", outcome.err);
    }
    EXPECT_EQ(0, view({signpost("obj"), "--script", directory.write("empty", "")}).status);
    EXPECT_EQ(2, view({"--script"}).status);
}

TEST(Viewer, AScriptWithoutAnEndEndsInALine)
{
    const Outcome outcome = view({"--script", "/dev/zero"});
    EXPECT_EQ(4, outcome.status);
    EXPECT_EQ("vfviewer: /dev/zero: line 1 has a zero byte; a script is text\n", outcome.err);
}

TEST(Viewer, AFullStandardOutputIsToldAndStatus4)
{
    for (const std::string arguments :
         {"--list-commands", "--list-ui", "--list-formats", "--help", "--invoke vfViewer::PrintStatistics"})
    {
        const Outcome outcome = vfTest::runProgram(
            {"sh", "-c",
             "'" VELAFORGE_PROGRAM_DIR "/vfviewer' " + arguments + " '" + signpost("obj") + "' >/dev/full"});
        EXPECT_EQ(4, outcome.status) << arguments;
        EXPECT_THAT(outcome.err, EndsWith("vfviewer: standard output: No space left on device\n"))
            << arguments;
    }
}

TEST(Viewer, OneFileUnderTwoPathsIsOneModelAndAFailureNamesItAsItWasTyped)
{
    const TemporaryDirectory directory;
    std::filesystem::copy_file(signpost("stl"), directory.file("a.stl"));
    const Outcome outcome =
        view({"--headless", "a.stl", "./a.stl", "./none.stl", "--invoke", "vfViewer::MergeOpen"},
             directory.path());
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("vfviewer: ./none.stl: No such file or directory\n"));
    EXPECT_THAT(outcome.err, HasSubstr("vfviewer: ./a.stl: no other model is open\n"));
    EXPECT_THAT(outcome.err, Not(HasSubstr("could not be carried out"))); // it is told once
}

TEST(Viewer, SeveralModelsAreMergedIntoOneFile)
{
    const vfTest::TemporaryDirectory directory;
    const std::string all = directory.file("all.osgb");
    const Outcome outcome = view({signpost("obj"), signpost("stl"), "--invoke", "vfViewer::MergeOpen",
                                  "--invoke", "vfViewer::Activate=signpost.obj", "--invoke",
                                  "vfViewer::Activate=signpost.stl", "--invoke", "vfViewer::SaveAs=" + all});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    const auto triangles = [](const std::string& file) {
        const std::string out = view({file, "--invoke", "vfViewer::PrintStatistics"}).out;
        const std::size_t end = out.find(" triangles");
        return end == std::string::npos ? -1 : std::atoi(out.c_str() + out.rfind(' ', end - 1));
    };
    EXPECT_LT(0, triangles(signpost("obj")));
    EXPECT_EQ(triangles(signpost("obj")) + triangles(signpost("stl")), triangles(all));
    EXPECT_EQ(4, view({signpost("obj"), "--invoke", "vfViewer::Activate=none.obj", "--snapshot",
                       directory.file("a.png")})
                     .status);
}

TEST(Viewer, EveryCommandIsDocumentedAndTheOtherWayRound)
{
    const std::string documented = vfTest::readFile(VELAFORGE_SOURCE_DIR "/docs/commands.md");
    const auto names = [](const std::string& text) {
        std::set<std::string> found;
        const std::string prefix = "vfViewer::";
        for (std::size_t at = text.find(prefix); at != std::string::npos; at = text.find(prefix, at + 1)) {
            std::size_t end = at + prefix.size();
            while (end < text.size() && std::isalpha(static_cast<unsigned char>(text[end])))
                ++end;
            found.insert(text.substr(at, end - at));
        }
        return found;
    };
    const std::set<std::string> commands = names(view({"--list-commands"}).out);
    EXPECT_LT(20u, commands.size());
    EXPECT_EQ(names(documented), commands);
}

TEST(Viewer, WhatARunLeavesTheNextOneFinds)
{
    // The settings of the tests are in a home of their own.
    ASSERT_EQ(0, view({signpost("obj")}).status);
    const std::string path = std::string(getenv("XDG_CONFIG_HOME")) + "/velaforge/vfviewer.json";
    std::string settings = vfTest::readFile(path);
    const std::string area = "\"area\": 1";
    ASSERT_NE(std::string::npos, settings.find(area)) << settings;
    settings.replace(settings.find(area), area.size(), "\"area\": 2");
    std::ofstream(path) << settings;
    EXPECT_THAT(view({"--list-ui"}).out, HasSubstr("vfViewer::SceneTree \"Scene\", right\n"));
    EXPECT_THAT(vfTest::readFile(path), testing::Not(HasSubstr(area)));
}

TEST(Viewer, ASnapshotThatCannotBeWrittenIsStatus4)
{
    const TemporaryDirectory directory;
    const std::string readOnly = directory.write("kept.png", "before");
    chmod(readOnly.c_str(), 0400);
    mkdir(directory.file("taken.png").c_str(), 0700);
    const std::pair<std::string, std::string> cases[] = {
        {directory.file("missing/out.png"), "No such file or directory"},
        {readOnly, "Permission denied"},
        {directory.file("taken.png"), "Is a directory"},
    };
    for (const auto& [path, reason] : cases) {
        const Outcome outcome = view({signpost("obj"), "--size", "20x20", "--snapshot", path});
        EXPECT_EQ(4, outcome.status) << path;
        EXPECT_THAT(outcome.err,
                    HasSubstr(std::string(path).append(": snapshot not written: ") + reason + "\n"));
    }
    EXPECT_EQ("before", vfTest::readFile(readOnly));
    const Outcome nothing = view({"--snapshot", directory.file("out.png")});
    EXPECT_EQ(4, nothing.status);
    EXPECT_THAT(nothing.err, HasSubstr("no document is open"));
}

TEST(Viewer, AFileThatMayNotBeReadIsTold)
{
    const TemporaryDirectory directory;
    const std::string file = directory.write("secret.obj", "v 0 0 0\n");
    chmod(file.c_str(), 0000);
    chmod(directory.path().c_str(), 0755);
    std::vector<std::string> command = {VELAFORGE_PROGRAM_DIR "/vfviewer", file};
    if (geteuid() == 0) {
        if (vfTest::runProgram(
                {"setpriv", "--reuid=65534", "--clear-groups", VELAFORGE_PROGRAM_DIR "/vfviewer", "--help"})
                .status != 1)
            GTEST_SKIP() << "the program cannot be run as another user here";
        command.insert(command.begin(), {"setpriv", "--reuid=65534", "--clear-groups"});
    }
    const Outcome outcome = vfTest::runProgram(command);
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("secret.obj: Permission denied\n"));
}

TEST(Viewer, ASnapshotReplacesAPictureWholeAndLeavesNothingElse)
{
    const TemporaryDirectory directory;
    const std::string picture = directory.write("out.png", "before");
    ASSERT_EQ(0, view({"--size", "20x20", "--snapshot", picture, signpost("obj")}).status);
    EXPECT_EQ(20, Picture(picture).width);
    unlink(picture.c_str());
    EXPECT_EQ(0, rmdir(directory.path().c_str())) << "something was left beside the picture";
    mkdir(directory.path().c_str(), 0700);
}

TEST(Viewer, WorksWithoutAHomeAndWithoutADisplay)
{
    const TemporaryDirectory directory;
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_RUNTIME_DIR");
    setenv("HOME", directory.file("nowhere").c_str(), 1);
    unsetenv("XDG_CONFIG_HOME");
    const std::string picture = directory.file("out.png");
    const Outcome outcome = view({"--size", "20x20", "--snapshot", picture, signpost("obj")});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ(20, Picture(picture).width);
}

TEST(Viewer, LoadsNothingThatParsesFilesIntoItself)
{
    const TemporaryDirectory directory;
    // The dynamic linker writes a file for each process whose environment asks for it; the reader processes have none.
    setenv("LD_DEBUG", "files", 1);
    setenv("LD_DEBUG_OUTPUT", directory.file("libraries").c_str(), 1);
    const Outcome outcome =
        view({"--headless", "--snapshot", directory.file("a.png"), signpost("obj"), signpost("osgt"),
              signpost("3ds"), signpost("glb"), VELAFORGE_SOURCE_DIR "/models/sailboat.obj"});
    unsetenv("LD_DEBUG");
    EXPECT_EQ(0, outcome.status) << outcome.err;
    std::set<std::string> loaded;
    for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
        if (entry.path().filename().string().find("libraries.") != 0)
            continue;
        std::ifstream log(entry.path());
        for (std::string line; std::getline(log, line);) {
            const std::size_t at = line.find("calling init: ");
            if (at != std::string::npos)
                loaded.insert(std::filesystem::path(line.substr(at + 14)).filename());
        }
    }
    EXPECT_EQ(1u, loaded.count("libvfFormats.so.0"));
    for (const std::string& library : loaded) {
        EXPECT_EQ(std::string::npos, library.find("vfFormatReaders")) << library;
        EXPECT_EQ(std::string::npos, library.find("assimp")) << library;
        // One plug-in writes the picture.
        EXPECT_TRUE(library.find("osgdb_") == std::string::npos || library == "osgdb_png.so") << library;
    }
}

TEST(Viewer, ReadsNothingWithoutTheSandboxThatIsRequired)
{
    const TemporaryDirectory directory;
    EXPECT_EQ(
        0, view({"--headless", "--require-sandbox", "--snapshot", directory.file("a.png"), signpost("obj")})
               .status);
    EXPECT_TRUE(std::filesystem::exists(directory.file("a.png")));
    // As on a kernel without Landlock. The processes that the program starts inherit the filter.
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_landlock_create_ruleset, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter = {std::size(program), program};
    ASSERT_EQ(0, prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0));
    ASSERT_EQ(0, prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter));
    Outcome outcome = view({"--headless", "--require-sandbox", signpost("obj")});
    EXPECT_EQ(4, outcome.status);
    EXPECT_THAT(outcome.err, HasSubstr("the sandbox is not complete: Landlock is not there"));
    outcome = view({"--headless", "--verbose", signpost("obj")});
    EXPECT_EQ(0, outcome.status);
    EXPECT_THAT(outcome.err + outcome.out, HasSubstr("the sandbox is not complete: Landlock is not there"));
    outcome = view({"--headless", signpost("obj")});
    EXPECT_EQ(0, outcome.status);
    EXPECT_THAT(outcome.err + outcome.out, Not(HasSubstr("sandbox")));
}

TEST(Viewer, WorksWithItsStandardStreamsClosed)
{
    const TemporaryDirectory directory;
    const std::string picture = directory.file("out.png");
    const std::string saved = directory.file("saved.stl");
    // A script from a closed standard input is an empty one, and does not wait.
    const Outcome outcome = vfTest::runProgram(
        {"bash", "-c",
         "exec " VELAFORGE_PROGRAM_DIR "/vfviewer --size 20x20 --script - --invoke 'vfViewer::SaveAs=" +
             saved + "' --snapshot '" + picture + "' '" + signpost("obj") + "' <&- >&- 2>&-"});
    EXPECT_EQ(0, outcome.status) << outcome.err;
    EXPECT_EQ(20, Picture(picture).width);
    EXPECT_TRUE(std::filesystem::exists(saved));
}

TEST(Viewer, AMillionTrianglesAreReadAndDrawn)
{
    const TemporaryDirectory directory;
    const std::string model = directory.file("big.stl");
    const Outcome made = vfTest::runProgram(
        {"bash", "-c", VELAFORGE_SOURCE_DIR "/tools/make_models.py --big 1000000 > '" + model + "'"});
    ASSERT_EQ(0, made.status) << made.err;
    const std::string picture = directory.file("out.png");
    const Outcome outcome = view({"--size", "400x300", "--snapshot", picture, model});
    ASSERT_EQ(0, outcome.status) << outcome.err;
    EXPECT_GT(Picture(picture).model, 20000);
}
