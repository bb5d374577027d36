// SPDX-License-Identifier: MIT
// Images, which are read with the plug-ins of OpenSceneGraph.
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

namespace {

Format imageFormat(const std::vector<std::string>& extensions, const std::vector<std::string>& plugins = {})
{
    Format format;
    format.extensions = extensions;
    format.name = "image";
    format.isImage = true;
    format.standsAlone = true;
    format.holdsImages = true;
    format.plugins = plugins;
    return format;
}

} // namespace

std::vector<Format> imageFormats()
{
    return {imageFormat({"png"}),         imageFormat({"jpg", "jpeg"}, {"jpeg"}),
            imageFormat({"bmp"}),         imageFormat({"gif"}),
            imageFormat({"tga"}),         imageFormat({"tif", "tiff"}, {"tiff"}),
            imageFormat({"dds"}),         imageFormat({"rgb", "rgba", "sgi"}, {"rgb"}),
            imageFormat({"ppm"}, {"pnm"})};
}

} // namespace vfFormats
