// SPDX-License-Identifier: MIT
#include "formats/Formats.h"
#include "reading/PlyReader.h"

namespace vfViewer {

/// Its reader shows a file that ends too early as far as it goes.
Format plyFormat()
{
    Format format;
    format.extensions = {"ply"};
    format.name = "Polygon file format";
    format.mimeType = "model/x-ply";
    format.signature = "ply";
    format.reader = ReadBy::Own;
    format.read = readPly;
    return format;
}

} // namespace vfViewer
