// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

/// Features of a model that not every format keeps, as bits.
enum ModelFeature : unsigned int
{
    PartNames = 1,
    SeveralParts = 2,
    Colors = 4, ///< of materials
    Textures = 8,
    VertexColors = 16,
    SmoothNormals = 32,
    Lines = 64,
    Points = 128,
    HiddenParts = 256,
    Animations = 512
};

/// All bits of ModelFeature.
constexpr unsigned int allFeatures = ~0u;

/// The code that reads the files of a format. Of two, the second reads files in which the first finds nothing.
enum class ReadBy
{
    Own,            ///< FormatCode::read
    OpenSceneGraph, ///< OpenSceneGraph's plug-in for the extension
    OpenSceneGraphOrAssimp,
    AssimpOrOpenSceneGraph,
    Assimp
};

/// The record of a file format. Lists of formats, filters of dialogs, the choice of the reader and what is told about losses
/// all come from these records.
struct Format
{
    std::vector<std::string> extensions; ///< in lower case, without dots; the first one identifies the format
    std::string name;                    ///< the name that users see
    std::string mimeType;  ///< the MIME type; empty where the desktop has one that is not ours to declare
    std::string signature; ///< the first bytes of each file; empty for a format without fixed ones
    bool isImage = false;  ///< a format of images, shown as a textured rectangle

    ReadBy reader = ReadBy::OpenSceneGraph; ///< the code that reads its files
    bool hasNormals = false;                ///< the reader computes all normals
    bool hasYUp = false;      ///< the y axis points up in its files, and the reader leaves it so
    bool keepsScenes = false; ///< files keep a whole scene graph, and materials need no correction
    bool standsAlone = false; ///< its files name no other files; images may be in them
    bool holdsImages = false; ///< its files may have images in them
    std::vector<std::string>
        sideExtensions;               ///< of files beside a model whose extensions belong to no listed format
    std::vector<std::string> plugins; ///< OpenSceneGraph's plug-ins whose names are not the extensions

    /// Returns whether a file surely ends too early, judged by what it announces. Null for a format that announces nothing.
    bool (*isCutOff)(std::string_view file) = nullptr;

    bool isWritten = false;          ///< written by FormatCode::write, otherwise by OpenSceneGraph's plug-in
    unsigned int lost = allFeatures; ///< features that written files do not keep, as bits of ModelFeature
    bool isWrittenWithYUp = false;   ///< the y axis points up in written files
    bool isWrittenFlat = false;      ///< vertices are transformed before they are written
};

/// Returns all formats, in the order in which users see them. Valid until the next addFormat().
VFFORMATS_EXPORT const std::vector<std::shared_ptr<const Format>>& formats();

/// Adds a format behind the others. A program and its helper executable add the same ones, before they have threads; see
/// useReaderProgram().
/// @param format  the record
VFFORMATS_EXPORT void addFormat(const Format& format);

/// Returns the format of a file by its extension; null for an unknown one.
VFFORMATS_EXPORT const Format* formatOf(const std::string& path);

/// Returns the format with an extension, in lower case and without a dot; null for an unknown one.
VFFORMATS_EXPORT const Format* formatNamed(std::string_view extension);

} // namespace vfFormats
