// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/CutOff.h>
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

namespace {

/// A binary file has no braces, and says at its beginning that it is one.
bool isCutOff(std::string_view file)
{
    return file.substr(0, 16).find("txt") != std::string_view::npos && isCutOffInBraces(file);
}

} // namespace

Format directXFormat()
{
    Format format;
    format.extensions = {"x"};
    format.name = "DirectX";
    format.mimeType = "model/x-directx";
    format.signature = "xof 03";
    format.reader = ReadBy::AssimpOrOpenSceneGraph;
    format.isCutOff = isCutOff;
    return format;
}

} // namespace vfFormats
