// SPDX-License-Identifier: MIT
#include "formats/Formats.h"

namespace vfViewer {

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

} // namespace vfViewer
