// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct Format;

/// The files that a model is written to. They are open and empty, and belong to the caller.
struct WriteTarget
{
    int model = -1;     ///< descriptor of the model's file
    int materials = -1; ///< descriptor of a file for materials beside it; a writer may leave that empty
    std::string materialsName; ///< the file name that the materials will have
    std::string modelName;     ///< the file name that the model will have
};

/// The code that reads and writes the files of a format. It runs in processes of a helper executable, which are locked down
/// before they see the file. Link vfFormatReaders.
struct FormatCode
{
    /// Reads a file. Null for a format that is not read by ReadBy::Own.
    ReadOutcome (*read)(const std::string& path) = nullptr;

    /// Writes a scene, which it may change. Returns why it could not be written; empty when it was. Null for OpenSceneGraph's
    /// plug-in.
    std::string (*write)(osg::Node& scene, const WriteTarget& target) = nullptr;
};

/// Returns the code of a format; both functions are null when there is none.
FormatCode codeOf(const Format& format);

/// Adds the code of a format, or replaces it. Call it in a helper executable, before it has threads.
/// @param extension  the first extension of the format
/// @param code       its functions
void addFormatCode(const std::string& extension, const FormatCode& code);

} // namespace vfFormats
