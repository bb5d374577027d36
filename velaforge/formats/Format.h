// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

/// What a model may have that not every format keeps. Numbers are bits.
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
constexpr unsigned int allFeatures = ~0u;

/// Who reads the files of a format, in the order in which they are asked.
enum class ReadBy
{
    Own,                    ///< this project's reader, see FormatCode.h
    OpenSceneGraph,         ///< its plug-in for the extension
    OpenSceneGraphOrAssimp, ///< the second where the first finds nothing
    AssimpOrOpenSceneGraph,
    Assimp
};

/// A format of files.
struct Format
{
    std::vector<std::string> extensions; ///< in lower case, without dots; the first one names the format
    std::string name;                    ///< as users know it
    std::string mimeType;                ///< empty for that of the system
    std::string signature;               ///< with which each file begins; empty for formats without one
    bool isImage = false;

    ReadBy reader = ReadBy::OpenSceneGraph;
    bool hasNormals = false;                 ///< the reader works all of them out
    bool hasYUp = false;                     ///< in its files y points up, and the reader leaves it so
    bool keepsScenes = false;                ///< all of a scene is kept; materials are meant as they are
    bool standsAlone = false;                ///< its files name no other ones; images may be in them
    bool holdsImages = false;                ///< its files may have images in them
    std::vector<std::string> sideExtensions; ///< of files beside a model that are of no listed format
    std::vector<std::string> plugins;        ///< of OpenSceneGraph that have other names than the extensions

    /// Looks for the end of a file, as the format announces it. @return true when it surely ends too early
    bool (*isCutOff)(std::string_view file) = nullptr;

    bool isWritten = false;
    unsigned int lost = allFeatures; ///< of a model that is written
    bool isWrittenWithYUp = false;
    bool isWrittenFlat = false; ///< transforms are worked into the points
};

/// Returns all formats, in the order in which they are offered.
VFFORMATS_EXPORT const std::vector<std::shared_ptr<const Format>>& formats();

/// Adds a format behind the others. To be called before there are threads.
VFFORMATS_EXPORT void addFormat(const Format& format);

/// @return the format of a file, by its extension; null for an unknown one
VFFORMATS_EXPORT const Format* formatOf(const std::string& path);

/// @return the format with an extension, in lower case and without a dot; null for an unknown one
VFFORMATS_EXPORT const Format* formatNamed(std::string_view extension);

} // namespace vfFormats
