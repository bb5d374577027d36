// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfTest {

/// @return the path of the test model "signpost" in that format
inline std::string signpost(const std::string& extension)
{
    return std::string(VELAFORGE_SOURCE_DIR "/tests/fixtures/formats/signpost.") + extension;
}

/// @return the formats in which there is a signpost
inline std::vector<std::string> signpostFormats()
{
    return {"obj", "stl",  "ply", "3ds", "ac",  "lwo", "dxf", "osgt", "osgb", "ive", "x",
            "dae", "gltf", "glb", "fbx", "3mf", "off", "x3d", "amf",  "ase",  "nff", "md5mesh"};
}

} // namespace vfTest
