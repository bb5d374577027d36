// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

/// Its reader shows a file that ends too early as far as it goes.
Format plyFormat()
{
    Format format;
    format.extensions = {"ply"};
    format.name = "Polygon file format";
    format.mimeType = "model/x-ply";
    format.signature = "ply";
    format.reader = ReadBy::Own;
    return format;
}

} // namespace vfFormats
