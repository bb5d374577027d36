// SPDX-License-Identifier: MIT
// Scenes on their way from the process that read them.
#include "support/EveryClass.h"
#include "support/Models.h"
#include "support/Reading.h"

#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/formats/internal/SceneTransfer.h>
#include <velaforge/formats/internal/TransferBytes.h>
#include <velaforge/formats/internal/TransferParts.h>
#include <velaforge/formats/readers/ModelReader.h>
#include <velaforge/isolation/SharedMemory.h>

#include <osg/ClipNode>
#include <osg/CullFace>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Light>
#include <osg/MatrixTransform>
#include <osg/PagedLOD>
#include <osg/Program>
#include <osg/ShapeDrawable>
#include <osg/Texture2D>
#include <osgAnimation/UpdateBone>
#include <osgDB/Registry>
#include <osgDB/WriteFile>
#include <osgText/Text>

#include <gmock/gmock.h>

#include <atomic>
#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using vfFormats::ReadOutcome;
using vfTest::gradient;
using vfTest::triangleGeometry;
using vfTest::withTriangle;

namespace {

class SceneTransfer : public vfTest::Reading
{};

/// @return the bytes of a transfer, with all arrays in them
std::string send(ReadOutcome& outcome, vfFormats::SceneSharing sharing = vfFormats::SceneSharing::None)
{
    const int file = vfIsolation::makeSharedMemory("scene");
    const long long size =
        vfFormats::SceneSender(file).send(outcome, vfFormats::SceneSender::LargeArrays::InFile, sharing);
    EXPECT_GT(size, 0);
    std::string bytes(static_cast<std::size_t>(size), ' ');
    EXPECT_EQ(size, pread(file, bytes.data(), bytes.size(), 0));
    close(file);
    return bytes;
}

std::string send(osg::Node& scene)
{
    ReadOutcome outcome;
    outcome.scene = &scene;
    return send(outcome);
}

ReadOutcome receive(const std::string& bytes)
{
    ReadOutcome outcome = vfFormats::receiveScene(bytes.data(), bytes.size());
    EXPECT_NE(outcome.scene.valid(), !outcome.reason.empty());
    return outcome;
}

ReadOutcome transferred(osg::Node& scene)
{
    ReadOutcome outcome;
    outcome.scene = &scene;
    return receive(send(outcome));
}

/// @return a scene as the text in which OpenSceneGraph writes it, with everything that it knows of but which objects are the
///         same: it also numbers the buffers that it makes for the driver
std::string textOf(const osg::Node& scene)
{
    osgDB::ReaderWriter* format = osgDB::Registry::instance()->getReaderWriterForExtension("osgt");
    std::ostringstream stream;
    stream.precision(17);
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
    options->setPluginStringData("fileType", "Ascii");
    EXPECT_TRUE(format && format->writeNode(scene, stream, options).success());
    std::istringstream lines(stream.str());
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("UniqueID") == std::string::npos)
            text += line + "\n";
    }
    return text;
}

/// @return lines in which two texts differ, for a message
std::string differenceOf(const std::string& a, const std::string& b)
{
    std::istringstream left(a);
    std::istringstream right(b);
    std::string before;
    std::string x;
    std::string y;
    for (int number = 1; std::getline(left, x) && std::getline(right, y); ++number) {
        if (x != y)
            return std::to_string(number) + ": " + before + "\n" + x + "\n" + y;
        before = x;
    }
    return a.size() == b.size() ? std::string() : "one is longer";
}

} // namespace

TEST_F(SceneTransfer, EveryFieldOfEveryClassComesOver)
{
    const osg::ref_ptr<osg::Group> scene = vfTest::sceneOfEverything();
    ReadOutcome sent;
    sent.scene = scene;
    const std::string bytes = send(sent);
    EXPECT_THAT(sent.warnings, IsEmpty());
    const ReadOutcome arrived = receive(bytes);
    ASSERT_TRUE(arrived.scene) << arrived.reason;
    EXPECT_EQ("", differenceOf(textOf(*scene), textOf(*arrived.scene)));
    EXPECT_GT(textOf(*scene).size(), 50000u);
}

TEST_F(SceneTransfer, ModelsOfAllFormatsComeOverAsTheyWereRead)
{
    for (const std::string& format : vfTest::signpostFormats()) {
        ReadOutcome read = vfFormats::parseModel(vfTest::signpost(format));
        ASSERT_TRUE(read.scene) << format;
        const std::string before = textOf(*read.scene);
        const std::string bytes = send(read);
        EXPECT_EQ(bytes, send(read, vfFormats::SceneSharing::OtherThreads)) << format;
        const ReadOutcome arrived = receive(bytes);
        ASSERT_TRUE(arrived.scene) << format;
        EXPECT_EQ("", differenceOf(before, textOf(*arrived.scene))) << format;
    }
}

TEST_F(SceneTransfer, ATextOfAFileComesOverWithoutAWarning)
{
    const osg::ref_ptr<osgText::Text> text = new osgText::Text;
    text->setText("Words");
    const osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(text);
    const std::string path = directory.file("text.osgt");
    ASSERT_TRUE(osgDB::writeNodeFile(*geode, path));
    const ReadOutcome outcome = read(path);
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, IsEmpty());
    const auto* arrived = dynamic_cast<const osgText::Text*>(outcome.scene->asGroup()->getChild(0));
    ASSERT_TRUE(arrived);
    EXPECT_EQ("Words", arrived->getText().createUTF8EncodedString());
    EXPECT_TRUE(arrived->getStateSet()->getAttribute(osg::StateAttribute::PROGRAM))
        << "which draws the letters";
}

TEST_F(SceneTransfer, WhatIsSharedIsSentOnce)
{
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    const osg::ref_ptr<osg::Geometry> shared = triangleGeometry();
    for (int i = 0; i < 3; ++i) {
        const osg::ref_ptr<osg::Geometry> other = triangleGeometry();
        other->setVertexArray(shared->getVertexArray());
        other->setStateSet(shared->getOrCreateStateSet());
        scene->addChild(other);
    }
    shared->getOrCreateStateSet()->setTextureAttribute(0, new osg::Texture2D(gradient(4, 4, 1)));
    scene->addChild(shared);
    scene->addChild(shared);
    const ReadOutcome outcome = transferred(*scene);
    ASSERT_TRUE(outcome.scene);
    const osg::Group& arrived = *outcome.scene->asGroup();
    ASSERT_EQ(5u, arrived.getNumChildren());
    EXPECT_EQ(arrived.getChild(3), arrived.getChild(4));
    for (unsigned int i = 1; i < 5; ++i) {
        const osg::Geometry& geometry = *arrived.getChild(i)->asGeometry();
        EXPECT_EQ(arrived.getChild(0)->asGeometry()->getVertexArray(), geometry.getVertexArray());
        EXPECT_EQ(arrived.getChild(0)->getStateSet(), geometry.getStateSet());
    }
}

TEST_F(SceneTransfer, NodesOfOtherClassesComeOverAsWhatTheyCanBe)
{
    const osg::ref_ptr<osg::Group> scene = new osg::Group;
    scene->addChild(withTriangle<osg::ClipNode>());
    const auto paged = withTriangle<osg::PagedLOD>();
    paged->setFileName(1, "later.osgt");
    scene->addChild(paged);
    scene->addChild(new osg::Node);
    scene->addChild(new osg::ShapeDrawable(new osg::Sphere));
    scene->addChild(new osg::Drawable);
    const auto shaded = withTriangle<osg::Geode>();
    shaded->getOrCreateStateSet()->setAttribute(new osg::Program);
    shaded->setCullCallback(new osg::NodeCallback);
    scene->addChild(shaded);
    ReadOutcome sent;
    sent.scene = scene;
    const ReadOutcome outcome = receive(send(sent));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings,
                testing::UnorderedElementsAre("osg::ClipNode is left out", "osg::PagedLOD is left out",
                                              "osg::Drawable is left out", "osg::Program is left out"));
    const osg::Group& arrived = *outcome.scene->asGroup();
    ASSERT_EQ(6u, arrived.getNumChildren());
    for (const unsigned int i : {0u, 1u}) {
        EXPECT_STREQ("Group", arrived.getChild(i)->className());
        EXPECT_EQ(scene->getChild(i)->getName(), arrived.getChild(i)->getName());
        EXPECT_EQ(1u, arrived.getChild(i)->asGroup()->getNumChildren());
    }
    EXPECT_STREQ("Group", arrived.getChild(2)->className());
    EXPECT_EQ(scene->getChild(3)->asGeometry()->getVertexArray()->getNumElements(),
              arrived.getChild(3)->asGeometry()->getVertexArray()->getNumElements());
    EXPECT_FALSE(arrived.getChild(4)->asGeometry()->getVertexArray()) << "in its place, so that numbers stay";
    EXPECT_TRUE(arrived.getChild(5)->getStateSet()->getAttributeList().empty());
    EXPECT_FALSE(arrived.getChild(5)->getCullCallback());
}

TEST_F(SceneTransfer, NumbersThatMeanNothingAreReplacedAndTold)
{
    const auto scene = withTriangle<osg::MatrixTransform>();
    const double nowhere = std::numeric_limits<double>::quiet_NaN();
    scene->setMatrix(osg::Matrix::translate(nowhere, 0, 1));
    scene->getOrCreateStateSet()->setAttribute(new osg::CullFace(osg::CullFace::Mode(5)));
    scene->getOrCreateStateSet()->setAttribute(new osg::Light(100));
    ReadOutcome sent;
    sent.scene = scene;
    const ReadOutcome outcome = receive(send(sent));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings, Contains("numbers that mean nothing are replaced"));
    EXPECT_EQ(osg::Vec3d(0, 0, 1),
              dynamic_cast<const osg::MatrixTransform&>(*outcome.scene).getMatrix().getTrans());
}

TEST_F(SceneTransfer, ASceneThatComesWithAReasonIsNotTaken)
{
    ReadOutcome sent;
    sent.scene = triangleGeometry();
    sent.reason = "a reason";
    const ReadOutcome outcome = receive(send(sent));
    EXPECT_FALSE(outcome.scene);
    EXPECT_EQ("a reason", outcome.reason);
}

TEST_F(SceneTransfer, AnImageThatCannotBeSentIsLeftOutAndTold)
{
    const auto scene = withTriangle<osg::Geode>();
    const osg::ref_ptr<osg::Image> image = gradient(8, 8, 1);
    image->setRowLength(4);
    scene->getOrCreateStateSet()->setTextureAttribute(0, new osg::Texture2D(image));
    ReadOutcome sent;
    sent.scene = scene;
    const ReadOutcome outcome = receive(send(sent));
    ASSERT_TRUE(outcome.scene) << outcome.reason;
    EXPECT_THAT(outcome.warnings,
                testing::ElementsAre("an image that is too large, or of an unusual kind, is left out"));
}

namespace {

/// The words of a transfer's lists, and where they begin.
struct Words
{
    explicit Words(const std::string& bytes)
    {
        vfFormats::Trailer trailer;
        std::memcpy(&trailer, bytes.data() + bytes.size() - sizeof(trailer), sizeof(trailer));
        const auto number = [&](std::size_t place, auto value) {
            std::memcpy(&value, bytes.data() + place, sizeof(value));
            return static_cast<std::size_t>(value);
        };
        std::size_t at = static_cast<std::size_t>(trailer.sceneAt);
        const std::size_t names = number(at, std::uint64_t());
        std::size_t text = 0;
        for (std::size_t i = 0; i < names; ++i)
            text += number(at + 8 + 4 * i, std::uint32_t());
        at += 8 + 4 * names + text;
        at += 8 + number(at, std::uint64_t()) * sizeof(vfFormats::ArrayPart);
        at += 8 + number(at, std::uint64_t()) * sizeof(vfFormats::ImagePart);
        sizes = at;
        begin = static_cast<std::size_t>(
            vfFormats::TransferSource::aligned(at + 4 * sizeof(vfFormats::ListPart)));
        end = bytes.size() - sizeof(trailer);
    }

    std::size_t sizes = 0; ///< of the lists
    std::size_t begin = 0;
    std::size_t end = 0;
};

void putWord(std::string& bytes, std::size_t at, std::uint32_t word)
{
    std::memcpy(bytes.data() + at, &word, sizeof(word));
}

} // namespace

TEST_F(SceneTransfer, EachWordMayBeAnyNumber)
{
    const std::string sound = send(*vfTest::sceneOfEverything());
    const Words words(sound);
    ASSERT_TRUE(receive(sound).scene);
    std::size_t refused = 0;
    std::size_t taken = 0;
    for (std::size_t at = words.sizes; at + 4 <= words.end; at += 4) {
        for (const std::uint32_t wrong : {0u, 1u, 0x7fffffffu, 0xffffffffu, 0x7fc00000u}) {
            std::string spoilt = sound;
            putWord(spoilt, at, wrong);
            ++(receive(spoilt).scene ? taken : refused);
        }
    }
    EXPECT_GT(refused, 1000u);
    EXPECT_GT(taken, 1000u) << "a color may be another one";
}

TEST_F(SceneTransfer, ListsThatEndTooEarlyOrTooLateAreRefused)
{
    const std::string sound = send(*vfTest::sceneOfEverything());
    const Words words(sound);
    for (std::size_t list = 0; list < 4; ++list) {
        for (const std::size_t field : {std::size_t(0), std::size_t(4)}) {
            for (const int step : {-1, 1}) {
                std::string spoilt = sound;
                std::uint32_t size = 0;
                const std::size_t at = words.sizes + list * 8 + field;
                std::memcpy(&size, sound.data() + at, sizeof(size));
                putWord(spoilt, at, size + static_cast<std::uint32_t>(step));
                EXPECT_FALSE(receive(spoilt).scene) << list << " " << field << " " << step;
            }
        }
    }
}

TEST_F(SceneTransfer, ASceneWithTooManyWaysThroughItIsRefused)
{
    // Twenty-five groups, each of which has the one before it twice: walks through it do not come to an end.
    osg::ref_ptr<osg::Node> below = triangleGeometry();
    for (int i = 0; i < 24; ++i) {
        const osg::ref_ptr<osg::Group> group = new osg::Group;
        group->addChild(below);
        group->addChild(below);
        below = group;
    }
    EXPECT_FALSE(transferred(*below).scene);
    EXPECT_TRUE(transferred(*below->asGroup()->getChild(0)->asGroup()->getChild(0)).scene);
}

TEST_F(SceneTransfer, ASceneThatIsTooDeepIsRefused)
{
    osg::ref_ptr<osg::Node> below = triangleGeometry();
    for (unsigned int depth = 1; depth < vfFormats::deepestScene; ++depth) {
        const osg::ref_ptr<osg::Group> group = new osg::Group;
        group->addChild(below);
        below = group;
    }
    EXPECT_TRUE(transferred(*below).scene);
    const osg::ref_ptr<osg::Group> above = new osg::Group;
    above->addChild(below);
    EXPECT_FALSE(transferred(*above).scene);
}

TEST_F(SceneTransfer, ACallbackAtANodeOfAnotherClassIsNotSent)
{
    const auto scene = withTriangle<osg::Group>();
    scene->setUpdateCallback(new osgAnimation::UpdateBone("bone"));
    const ReadOutcome outcome = transferred(*scene);
    ASSERT_TRUE(outcome.scene);
    EXPECT_FALSE(outcome.scene->getUpdateCallback());
}

TEST_F(SceneTransfer, PrimitivesThatAreDrawnManyTimesComeOverOnce)
{
    const osg::ref_ptr<osg::Geometry> geometry = triangleGeometry();
    geometry->getPrimitiveSet(0)->setNumInstances(1000000);
    const ReadOutcome outcome = transferred(*geometry);
    ASSERT_TRUE(outcome.scene);
    EXPECT_EQ(0, outcome.scene->asGeometry()->getPrimitiveSet(0)->getNumInstances());
}
