// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/ReadOutcome.h>

#include <string>

namespace osg {
class Node;
}

namespace vfFormats {

struct Format;

/// Where a model is written: to files that are open and empty. They stay the caller's.
struct WriteTarget
{
    int model = -1;
    int materials = -1;        ///< for a format that has a file of materials beside the model
    std::string materialsName; ///< the names that they will have
    std::string modelName;
};

/// What reads and writes the files of a format, in the processes of velaforge-reader.
struct FormatCode
{
    /// Reads a file. Null for a format that this project has no reader of its own for.
    ReadOutcome (*read)(const std::string& path) = nullptr;
    /// Writes a scene. Returns why it could not be written; empty when it was. Null for OpenSceneGraph's plug-in.
    std::string (*write)(osg::Node& scene, const WriteTarget& target) = nullptr;
};

/// Returns the code of a format; without functions for one that has none.
FormatCode codeOf(const Format& format);

/// Adds code for the format whose first extension is @p extension. Must be called before the process has threads.
void addFormatCode(const std::string& extension, const FormatCode& code);

} // namespace vfFormats
