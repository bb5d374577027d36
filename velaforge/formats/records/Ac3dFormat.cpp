// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/CutOff.h>
#include <velaforge/formats/records/FormatRecords.h>

#include <cstdint>

namespace vfFormats {

namespace {

std::uint64_t numberBehind(std::string_view line, std::size_t at)
{
    constexpr std::uint64_t most = std::uint64_t(1) << 60;
    std::uint64_t number = 0;
    for (std::size_t i = line.find_first_not_of(' ', at); i < line.size() && line[i] >= '0' && line[i] <= '9';
         ++i)
        number = std::min<std::uint64_t>(number * 10 + static_cast<std::uint64_t>(line[i] - '0'), most);
    return number;
}

/// Objects announce their surfaces, and every object ends with the number of its children.
bool isCutOff(std::string_view file)
{
    std::uint64_t announced = 0;
    std::uint64_t found = 0;
    std::uint64_t objects = 0;
    std::uint64_t children = 0;
    forEachLine(file, [&](std::string_view line) {
        if (beginsWith(line, "numsurf"))
            announced += numberBehind(line, 7);
        else if (beginsWith(line, "SURF"))
            ++found;
        else if (beginsWith(line, "OBJECT"))
            ++objects;
        else if (beginsWith(line, "kids"))
            ++children;
    });
    return found < announced || children < objects;
}

} // namespace

Format ac3dFormat()
{
    Format format;
    format.extensions = {"ac"};
    format.name = "AC3D";
    format.mimeType = "model/x-ac3d";
    format.signature = "AC3Db";
    format.reader = ReadBy::OpenSceneGraphOrAssimp;
    format.hasYUp = true;
    format.isCutOff = isCutOff;
    format.isWritten = true;
    format.lost = VertexColors | Points | HiddenParts | Animations;
    format.isWrittenWithYUp = true;
    return format;
}

} // namespace vfFormats
