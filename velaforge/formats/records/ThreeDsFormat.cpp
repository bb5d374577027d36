// SPDX-License-Identifier: MIT
#include <velaforge/formats/records/FormatRecords.h>

#include <cstdint>

namespace vfFormats {

namespace {

/// The first chunk holds all others and knows its length.
bool isCutOff(std::string_view file)
{
    if (file.size() < 6)
        return true;
    std::uint64_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length |= std::uint64_t(static_cast<unsigned char>(file[2 + i])) << (8 * i);
    return length > file.size();
}

} // namespace

Format threeDsFormat()
{
    Format format;
    format.extensions = {"3ds"};
    format.name = "3D Studio";
    format.mimeType = "image/x-3ds";
    format.reader = ReadBy::OpenSceneGraphOrAssimp;
    format.isCutOff = isCutOff;
    format.isWritten = true;
    format.lost = VertexColors | SmoothNormals | Lines | Points | HiddenParts | Animations;
    format.isWrittenFlat = true;
    return format;
}

} // namespace vfFormats
