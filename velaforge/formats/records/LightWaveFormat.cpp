// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/CutOff.h>
#include <velaforge/formats/records/FormatRecords.h>

#include <cstdint>

namespace vfFormats {

namespace {

bool isCutOff(std::string_view file)
{
    if (file.size() < 8)
        return true;
    std::uint64_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length = length << 8 | static_cast<unsigned char>(file[4 + i]);
    return beginsWith(file, "FORM") && length > file.size() - 8;
}

} // namespace

Format lightWaveFormat()
{
    Format format;
    format.extensions = {"lwo"};
    format.name = "LightWave";
    format.mimeType = "image/x-lwo";
    format.reader = ReadBy::OpenSceneGraphOrAssimp;
    format.isCutOff = isCutOff;
    return format;
}

} // namespace vfFormats
