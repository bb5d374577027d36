// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

Format dxfFormat()
{
    Format format;
    format.extensions = {"dxf"};
    format.name = "Drawing exchange";
    format.mimeType = "image/vnd.dxf";
    format.isWritten = true;
    format.lost = allFeatures & ~(PartNames | SeveralParts);
    return format;
}

} // namespace vfFormats
