// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

Format colladaFormat()
{
    Format format;
    format.extensions = {"dae"};
    format.name = "Collada";
    format.mimeType = "model/vnd.collada+xml";
    format.reader = ReadBy::AssimpOrOpenSceneGraph;
    format.holdsImages = true;
    return format;
}

} // namespace vfFormats
