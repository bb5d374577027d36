// SPDX-License-Identifier: MIT
// Formats that Assimp alone reads.
#include <velaforge/formats/internal/CutOff.h>
#include <velaforge/formats/records/FormatRecords.h>

namespace vfFormats {

namespace {

Format assimpFormat(const char* extension, const char* name, const char* mimeType)
{
    Format format;
    format.extensions = {extension};
    format.name = name;
    format.mimeType = mimeType;
    format.reader = ReadBy::Assimp;
    return format;
}

Format withYUp(Format format)
{
    format.hasYUp = true;
    return format;
}

Format inBraces(Format format)
{
    format.isCutOff = isCutOffInBraces;
    return format;
}

} // namespace

std::vector<Format> assimpFormats()
{
    Format fbx = withYUp(assimpFormat("fbx", "Filmbox", "model/x-fbx"));
    fbx.signature = "Kaydara FBX Binary";
    fbx.holdsImages = true;
    Format ase = inBraces(withYUp(assimpFormat("ase", "3ds Max ASCII export", "model/x-ase")));
    ase.signature = "*3DSMAX_ASCIIEXPORT";
    Format md5 = inBraces(withYUp(assimpFormat("md5mesh", "MD5", "model/x-md5mesh")));
    md5.signature = "MD5Version";
    md5.sideExtensions = {"md5anim", "md5camera"};
    Format gltf = withYUp(assimpFormat("gltf", "glTF", "model/gltf+json"));
    gltf.sideExtensions = {"bin"};
    gltf.holdsImages = true;
    Format glb = withYUp(assimpFormat("glb", "glTF in one file", "model/gltf-binary"));
    glb.holdsImages = true;
    Format archive = assimpFormat("3mf", "3D Manufacturing Format", "model/3mf");
    archive.holdsImages = true;
    return {gltf,
            glb,
            fbx,
            archive,
            assimpFormat("off", "Object file format", "model/x-off"),
            withYUp(assimpFormat("x3d", "X3D", "model/x3d+xml")),
            assimpFormat("amf", "Additive Manufacturing File", "model/x-amf"),
            ase,
            assimpFormat("nff", "Neutral file format", "model/x-nff"),
            md5};
}

} // namespace vfFormats
