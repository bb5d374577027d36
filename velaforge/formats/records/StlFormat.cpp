// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/StlKind.h>
#include <velaforge/formats/records/FormatRecords.h>

#include <cstdint>

namespace vfFormats {

namespace {

/// Numbers say how many triangles there are. Text is shown as far as it goes.
bool isCutOff(std::string_view file)
{
    constexpr std::size_t header = 84;
    constexpr std::size_t triangle = 50;
    if (isStlText(file))
        return false;
    if (file.size() < header)
        return true;
    std::uint64_t triangles = 0;
    for (std::size_t i = 0; i < 4; ++i)
        triangles |= std::uint64_t(static_cast<unsigned char>(file[80 + i])) << (8 * i);
    return file.size() - header < triangles * triangle;
}

} // namespace

Format stlFormat()
{
    Format format;
    format.extensions = {"stl"};
    format.name = "Stereolithography";
    format.mimeType = "model/stl";
    format.reader = ReadBy::Own;
    format.hasNormals = true;
    format.standsAlone = true;
    format.isCutOff = isCutOff;
    format.isWritten = true;
    format.lost = allFeatures & ~(PartNames | SeveralParts);
    return format;
}

} // namespace vfFormats
