// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>

namespace osg {
class Image;
}

namespace vfApplication {

/// Returns whether writeImage can write the format of the file's extension. Writes nothing.
/// @param path    the file
/// @param reason  set to the reason if the result is false
VFAPPLICATIONHEADLESS_EXPORT bool canWriteImage(const vfBase::VfString& path, vfBase::VfString& reason);

/// Returns whether the format of the extension of @p path supports transparency.
VFAPPLICATIONHEADLESS_EXPORT bool canBeTransparent(const vfBase::VfString& path);

/// Reads a size such as "1280x800" into @p width and @p height, in pixels. Each is from 1 to
/// OffscreenRenderer::sizeLimit.
/// @return false, with nothing changed, if @p size is no such size
VFAPPLICATIONHEADLESS_EXPORT bool parseImageSize(const vfBase::VfString& size, int& width, int& height);

/// Writes an image in the format of the file's extension: png, jpg, bmp, tga, tif or ppm.
///
/// Replaces the file as a whole or leaves it unchanged, see vfBase::replaceFile. Drops transparency if the
/// format does not support it.
/// @param image   the image
/// @param path    the file
/// @param reason  set to the reason if the result is false
/// @return false if the file could not be written
VFAPPLICATIONHEADLESS_EXPORT bool writeImage(const osg::Image& image, const vfBase::VfString& path,
                                             vfBase::VfString& reason);

} // namespace vfApplication
