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

/// Writes a picture in the format of the file's extension: png, jpg, bmp, tga, tif or ppm.
///
/// The file is written whole or not at all, see vfBase::replaceFile.
/// @param reason  why it could not be written
VFAPPLICATIONHEADLESS_EXPORT bool writeImage(const osg::Image& image, const vfBase::VfString& path,
                                             vfBase::VfString& reason);

} // namespace vfApplication
