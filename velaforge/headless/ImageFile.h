// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>

namespace osg {
class Image;
}

namespace vfApplication {

/// Tells whether pictures can be written in the format of that file's extension, without writing anything.
/// @param reason  why not
VFAPPLICATIONHEADLESS_EXPORT bool canWriteImage(const vfBase::VfString& path, vfBase::VfString& reason);

/// @return whether the format of that file's extension has transparency
VFAPPLICATIONHEADLESS_EXPORT bool canBeTransparent(const vfBase::VfString& path);

/// Reads a size as in "1280x800", each part from 1 to OffscreenRenderer::sizeLimit.
/// @return false for anything else, with nothing changed
VFAPPLICATIONHEADLESS_EXPORT bool parseImageSize(const vfBase::VfString& size, int& width, int& height);

/// Writes a picture in the format of the file's extension: png, jpg, bmp, tga, tif or ppm.
///
/// The file is written whole or not at all, see vfBase::replaceFile. Transparency is kept where there is any and the
/// format has it.
/// @param reason  why it could not be written
VFAPPLICATIONHEADLESS_EXPORT bool writeImage(const osg::Image& image, const vfBase::VfString& path,
                                             vfBase::VfString& reason);

} // namespace vfApplication
