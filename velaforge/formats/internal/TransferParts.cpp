// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/TransferParts.h>

#include <velaforge/formats/internal/FlatArrays.h>

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace vfFormats {

namespace {

constexpr int widestImage = 1 << 16;

bool isOneOf(std::uint32_t number, std::initializer_list<std::uint32_t> numbers)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

bool isCompressed(std::uint32_t pixelFormat)
{
    return isOneOf(pixelFormat,
                   {GL_COMPRESSED_RGB_S3TC_DXT1_EXT, GL_COMPRESSED_RGBA_S3TC_DXT1_EXT,
                    GL_COMPRESSED_RGBA_S3TC_DXT3_EXT, GL_COMPRESSED_RGBA_S3TC_DXT5_EXT,
                    GL_COMPRESSED_RED_RGTC1_EXT, GL_COMPRESSED_SIGNED_RED_RGTC1_EXT,
                    GL_COMPRESSED_RED_GREEN_RGTC2_EXT, GL_COMPRESSED_SIGNED_RED_GREEN_RGTC2_EXT});
}

/// Returns whether OpenSceneGraph and OpenGL agree on how many bytes a pixel has.
bool isKnownPixel(std::uint32_t pixelFormat, std::uint32_t dataType)
{
    if (isCompressed(pixelFormat))
        return dataType == GL_UNSIGNED_BYTE;
    const bool isPlain = isOneOf(pixelFormat, {GL_RED, GL_RG, GL_RGB, GL_BGR, GL_RGBA, GL_BGRA, GL_ALPHA,
                                               GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_DEPTH_COMPONENT});
    if (isPlain && isOneOf(dataType, {GL_UNSIGNED_BYTE, GL_BYTE, GL_UNSIGNED_SHORT, GL_SHORT, GL_UNSIGNED_INT,
                                      GL_INT, GL_HALF_FLOAT, GL_FLOAT}))
        return true;
    if (isOneOf(pixelFormat, {GL_RGB}))
        return isOneOf(dataType, {GL_UNSIGNED_BYTE_3_3_2, GL_UNSIGNED_BYTE_2_3_3_REV, GL_UNSIGNED_SHORT_5_6_5,
                                  GL_UNSIGNED_SHORT_5_6_5_REV});
    return isOneOf(pixelFormat, {GL_RGBA, GL_BGRA}) &&
           isOneOf(dataType,
                   {GL_UNSIGNED_SHORT_4_4_4_4, GL_UNSIGNED_SHORT_4_4_4_4_REV, GL_UNSIGNED_SHORT_5_5_5_1,
                    GL_UNSIGNED_SHORT_1_5_5_5_REV, GL_UNSIGNED_INT_8_8_8_8, GL_UNSIGNED_INT_8_8_8_8_REV,
                    GL_UNSIGNED_INT_10_10_10_2, GL_UNSIGNED_INT_2_10_10_10_REV});
}

/// Returns the bytes of a level of an image, 0 for what is no image. More than four gigabytes are beyond what
/// OpenSceneGraph counts.
std::uint64_t bytesOf(const ImagePart& part, std::uint32_t level)
{
    const bool isSized = part.width > 0 && part.height > 0 && part.depth > 0 && part.width <= widestImage &&
                         part.height <= widestImage && part.depth <= widestImage &&
                         isOneOf(part.packing, {1, 2, 4, 8});
    if (!isSized || level > mostMipmaps)
        return 0;
    const auto reduced = [level](std::int32_t size) { return std::max(1, size >> level); };
    const int packing = static_cast<int>(part.packing);
    const std::uint64_t pixels =
        static_cast<std::uint64_t>(reduced(part.width)) * static_cast<std::uint64_t>(reduced(part.height));
    const std::uint64_t bytesOfPixel =
        osg::Image::computePixelSizeInBits(part.pixelFormat, part.dataType) / 8 + 1;
    if (pixels > 0xffffffffu / bytesOfPixel / static_cast<std::uint64_t>(reduced(part.depth)))
        return 0;
    return osg::Image::computeImageSizeInBytes(reduced(part.width), reduced(part.height), reduced(part.depth),
                                               part.pixelFormat, part.dataType, packing);
}

} // namespace

bool isValid(const ImagePart& part)
{
    const bool isKnown = part.mipmapCount <= mostMipmaps && part.isTopFirst <= 1 &&
                         part.variance <= osg::Object::UNSPECIFIED && part.internalFormat >= 0 &&
                         part.internalFormat <= 0xffff && isKnownPixel(part.pixelFormat, part.dataType);
    if (!isKnown)
        return false;
    std::uint64_t end = bytesOf(part, 0);
    bool isInside = end > 0 && end <= part.size;
    for (std::uint32_t i = 0; i < part.mipmapCount && isInside; ++i) {
        const std::uint64_t size = bytesOf(part, i + 1);
        isInside = size > 0 && part.mipmaps[i] >= end && part.mipmaps[i] + size <= part.size;
        end = part.mipmaps[i] + size;
    }
    return isInside;
}

bool isValid(const ArrayPart& part)
{
    constexpr std::uint32_t lastMode = 0x0d; // triangle strips with adjacency
    if (part.kind >= flatArrays().size())
        return false;
    const std::uint64_t element = flatArrays()[part.kind].elementSize;
    const bool isOfElements =
        element == 0
            ? part.size == 0
            : part.size % element == 0 && part.size / element <= std::numeric_limits<std::int32_t>::max();
    const bool isBound = part.binding == osg::Array::BIND_UNDEFINED || part.binding == osg::Array::BIND_OFF ||
                         part.binding == osg::Array::BIND_OVERALL ||
                         part.binding == osg::Array::BIND_PER_PRIMITIVE_SET ||
                         part.binding == osg::Array::BIND_PER_VERTEX;
    return isOfElements && isBound && part.variance <= osg::Object::UNSPECIFIED && part.isNormalized <= 1 &&
           part.isPreserved <= 1 && part.mode <= lastMode && part.first >= 0 && part.count >= 0;
}

bool describe(const osg::Image& image, ImagePart& part)
{
    if ((image.getRowLength() != 0 && image.getRowLength() != image.s()) ||
        image.getNumMipmapLevels() > mostMipmaps)
        return false;
    part.isTopFirst = image.getOrigin() == osg::Image::TOP_LEFT;
    part.variance = image.getDataVariance();
    part.width = image.s();
    part.height = image.t();
    part.depth = image.r();
    part.internalFormat = image.getInternalTextureFormat();
    part.pixelFormat = image.getPixelFormat();
    part.dataType = image.getDataType();
    part.packing = image.getPacking();
    part.size = image.getTotalSizeInBytesIncludingMipmaps();
    for (const unsigned int offset : image.getMipmapLevels())
        part.mipmaps[part.mipmapCount++] = offset;
    return isValid(part);
}

} // namespace vfFormats
