// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Format.h>

namespace vfTest {

/// The record of a format that the libraries do not know: the corners of one triangle, a line each, and then
/// names of images, a line each.
inline vfFormats::Format triangleFormat()
{
    vfFormats::Format format;
    format.extensions = {"tri"};
    format.name = "One triangle";
    format.mimeType = "model/x-tri";
    format.reader = vfFormats::ReadBy::Own;
    format.isCutOff = [](std::string_view file) { return file.back() != '\n'; };
    format.isWritten = true;
    format.lost = vfFormats::allFeatures & ~vfFormats::PartNames;
    return format;
}

} // namespace vfTest
