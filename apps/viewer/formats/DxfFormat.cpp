// SPDX-License-Identifier: MIT
#include "formats/Formats.h"
#include "writing/DxfWriter.h"

namespace vfViewer {

namespace {

std::string write(osg::Node& scene, const WriteTarget& target)
{
    return writeDxf(scene, target.model);
}

} // namespace

Format dxfFormat()
{
    Format format;
    format.extensions = {"dxf"};
    format.name = "Drawing exchange";
    format.mimeType = "image/vnd.dxf";
    format.isWritten = true;
    format.write = write;
    format.lost = allFeatures & ~(PartNames | SeveralParts);
    return format;
}

} // namespace vfViewer
