// SPDX-License-Identifier: MIT
#include "support/TemporaryDirectory.h"

#include <velaforge/headless/ImageFile.h>

#include <osg/Image>
#include <osgDB/ReadFile>

#include <gmock/gmock.h>

#include <cstring>

#include <sys/resource.h>

using testing::HasSubstr;
using vfApplication::canBeTransparent;
using vfApplication::canWriteImage;
using vfApplication::parseImageSize;
using vfApplication::writeImage;
using vfBase::VfString;

namespace {

/// A picture whose width makes rows of an odd number of bytes: red at the bottom, blue at the top.
osg::ref_ptr<osg::Image> makePicture()
{
    osg::ref_ptr<osg::Image> image = new osg::Image;
    image->allocateImage(5, 3, 1, GL_RGBA, GL_UNSIGNED_BYTE);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            unsigned char* pixel = image->data(static_cast<unsigned int>(x), static_cast<unsigned int>(y));
            const unsigned char color[4] = {static_cast<unsigned char>(y == 0 ? 255 : 0),
                                            static_cast<unsigned char>(x * 40),
                                            static_cast<unsigned char>(y == 2 ? 255 : 0), 128};
            std::memcpy(pixel, color, 4);
        }
    }
    return image;
}

} // namespace

TEST(ImageFile, WritesEachFormatWithEveryPixelInItsPlace)
{
    const vfTest::TemporaryDirectory directory;
    const osg::ref_ptr<osg::Image> image = makePicture();
    for (const char* extension : {"png", "bmp", "tga", "tif", "ppm", "PNG"}) {
        const std::string path = directory.file(std::string("picture.") + extension);
        VfString reason;
        ASSERT_TRUE(writeImage(*image, path, reason)) << extension << ": " << reason.str();
        const osg::ref_ptr<osg::Image> read = osgDB::readRefImageFile(path);
        ASSERT_TRUE(read) << extension;
        ASSERT_EQ(5, read->s());
        ASSERT_EQ(3, read->t());
        const bool isTopFirst = read->getOrigin() == osg::Image::TOP_LEFT;
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 5; ++x) {
                const osg::Vec4 color = read->getColor(static_cast<unsigned int>(x),
                                                       static_cast<unsigned int>(isTopFirst ? 2 - y : y));
                EXPECT_NEAR(y == 0 ? 1 : 0, color.r(), 0.01) << extension << x << y;
                EXPECT_NEAR(x * 40 / 255.0, color.g(), 0.01) << extension << x << y;
                EXPECT_NEAR(y == 2 ? 1 : 0, color.b(), 0.01) << extension << x << y;
                const bool isKept = canBeTransparent(path);
                EXPECT_NEAR(isKept ? 128 / 255.0 : 1, color.a(), 0.01) << extension;
            }
        }
    }
    VfString reason;
    EXPECT_TRUE(writeImage(*image, directory.file("picture.jpg"), reason)) << reason.str();
}

TEST(ImageFile, APictureWithoutTransparencyIsWrittenWithoutAFourthChannel)
{
    const vfTest::TemporaryDirectory directory;
    const osg::ref_ptr<osg::Image> image = makePicture();
    for (std::size_t i = 3; i < image->getTotalSizeInBytes(); i += 4)
        image->data()[i] = 255;
    VfString reason;
    for (const char* name : {"a.png", "a.tga", "a.tif"}) {
        ASSERT_TRUE(writeImage(*image, directory.file(name), reason)) << reason.str();
        EXPECT_EQ(static_cast<GLenum>(GL_RGB),
                  osgDB::readRefImageFile(directory.file(name))->getPixelFormat());
    }
}

TEST(ImageFile, TellsWhichFormatsCanBeSeenThrough)
{
    for (const char* name : {"a.png", "a.PNG", "a.tga", "a.tif", "a.tiff"})
        EXPECT_TRUE(canBeTransparent(name)) << name;
    for (const char* name : {"a.jpg", "a.jpeg", "a.bmp", "a.ppm", "a", ""})
        EXPECT_FALSE(canBeTransparent(name)) << name;
}

TEST(ImageFile, ReadsSizes)
{
    int width = 0;
    int height = 0;
    EXPECT_TRUE(parseImageSize("1280x800", width, height));
    EXPECT_EQ(1280, width);
    EXPECT_EQ(800, height);
    for (const char* wrong :
         {"", "x", "10", "10x", "x10", "0x10", "10x0", "-1x5", "10x10x10", "99999x1", "10 x 10"})
        EXPECT_FALSE(parseImageSize(wrong, width, height)) << wrong;
    EXPECT_EQ(1280, width);
}

TEST(ImageFile, AnUnknownFormatIsRefusedWithoutWriting)
{
    const vfTest::TemporaryDirectory directory;
    VfString reason;
    EXPECT_FALSE(writeImage(*makePicture(), directory.file("picture.xyz"), reason));
    EXPECT_THAT(reason.str(), HasSubstr(".xyz"));
    EXPECT_THAT(reason.str(), HasSubstr("png"));
    EXPECT_FALSE(canWriteImage(directory.file("picture"), reason));
    EXPECT_THAT(reason.str(), HasSubstr("extension"));
    EXPECT_TRUE(canWriteImage("anywhere.png", reason));
    EXPECT_EQ("", vfTest::readFile(directory.file("picture.xyz")));
}

TEST(ImageFile, AFailureLeavesThePictureThatWasThere)
{
    const vfTest::TemporaryDirectory directory;
    const std::string path = directory.write("picture.bmp", "before");
    rlimit limit{20, RLIM_INFINITY};
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    VfString reason;
    EXPECT_FALSE(writeImage(*makePicture(), path, reason));
    limit.rlim_cur = RLIM_INFINITY;
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ("File too large", reason);
    EXPECT_EQ("before", vfTest::readFile(path));
}
