// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Format.h>

namespace vfFormats {

// The records of the table, each in the source of its name. See Formats.cpp.

Format objFormat();
Format stlFormat();
Format plyFormat();
Format threeDsFormat();
Format ac3dFormat();
Format lightWaveFormat();
Format dxfFormat();
Format colladaFormat();
Format directXFormat();
std::vector<Format> sceneFormats();
std::vector<Format> assimpFormats();
std::vector<Format> imageFormats();

} // namespace vfFormats
