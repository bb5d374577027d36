// SPDX-License-Identifier: MIT
#include <velaforge/headless/ImageFile.h>

#include <velaforge/base/ReplaceFile.h>
#include <velaforge/headless/OffscreenRenderer.h>

#include <osg/Image>
#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace vfApplication {

namespace {

const char* const formats[] = {"png", "jpg", "jpeg", "bmp", "tga", "tif", "tiff", "ppm"};

osgDB::ReaderWriter* writerFor(const vfBase::VfString& path, vfBase::VfString& reason)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    if (std::find(std::begin(formats), std::end(formats), extension) == std::end(formats)) {
        reason = (extension.empty() ? "the file name has no extension"
                                    : "cannot write ." + extension + " images") +
                 "; use png, jpg, bmp, tga, tif or ppm";
        return nullptr;
    }
    osgDB::ReaderWriter* writer = osgDB::Registry::instance()->getReaderWriterForExtension(extension);
    if (!writer)
        reason = "OpenSceneGraph's plug-in for ." + extension + " is not installed";
    return writer;
}

/// Removes one to five digits from the front of @p text and returns their value; 0 if it is not a size.
int takeLength(std::string& text)
{
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > 5)
        return 0;
    const int length = std::atoi(text.substr(0, digits).c_str());
    text.erase(0, digits);
    return length <= OffscreenRenderer::sizeLimit ? length : 0;
}

bool isOpaque(const osg::Image& image)
{
    for (int y = 0; y < image.t(); ++y) {
        const unsigned char* row = image.data(0, static_cast<unsigned int>(y));
        for (int x = 0; x < image.s(); ++x) {
            if (row[4 * x + 3] != 255)
                return false;
        }
    }
    return true;
}

/// Returns the image without its alpha channel: most pictures are opaque, and not every format has the
/// channel.
osg::ref_ptr<osg::Image> withoutAlpha(const osg::Image& image)
{
    osg::ref_ptr<osg::Image> opaque = new osg::Image;
    opaque->allocateImage(image.s(), image.t(), 1, GL_RGB, GL_UNSIGNED_BYTE, 1);
    for (int y = 0; y < image.t(); ++y) {
        const unsigned char* from = image.data(0, static_cast<unsigned int>(y));
        unsigned char* to = opaque->data(0, static_cast<unsigned int>(y));
        for (int x = 0; x < image.s(); ++x, from += 4, to += 3)
            std::copy(from, from + 3, to);
    }
    return opaque;
}

} // namespace

bool canWriteImage(const vfBase::VfString& path, vfBase::VfString& reason)
{
    return writerFor(path, reason) != nullptr;
}

bool canBeTransparent(const vfBase::VfString& path)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(path);
    return extension == "png" || extension == "tga" || extension == "tif" || extension == "tiff";
}

bool parseImageSize(const vfBase::VfString& size, int& width, int& height)
{
    std::string rest = size.str();
    const int parsedWidth = takeLength(rest);
    if (parsedWidth == 0 || rest.empty() || rest[0] != 'x')
        return false;
    rest.erase(0, 1);
    const int parsedHeight = takeLength(rest);
    if (parsedHeight == 0 || !rest.empty())
        return false;
    width = parsedWidth;
    height = parsedHeight;
    return true;
}

bool writeImage(const osg::Image& image, const vfBase::VfString& path, vfBase::VfString& reason)
{
    osgDB::ReaderWriter* writer = writerFor(path, reason);
    if (!writer)
        return false;
    const bool hasAlpha = image.getPixelFormat() == GL_RGBA && image.getDataType() == GL_UNSIGNED_BYTE;
    const bool isPlain = hasAlpha && (!canBeTransparent(path) || isOpaque(image));
    const osg::ref_ptr<osg::Image> opaque = isPlain ? withoutAlpha(image) : nullptr;
    std::ostringstream stream;
    // Level 4: the highest level takes as long as drawing and saves little.
    const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("PNG_COMPRESSION 4");
    const osgDB::ReaderWriter::WriteResult result =
        writer->writeImage(opaque ? *opaque : image, stream, options);
    if (!result.success() || !stream || stream.str().empty()) {
        reason = "the picture could not be encoded in this format";
        return false;
    }
    return vfBase::replaceFile(path, stream.str(), reason);
}

} // namespace vfApplication
