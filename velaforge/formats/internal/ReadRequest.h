// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>
#include <string_view>
#include <vector>

namespace vfFormats {

// The tasks of the processes that read and write files, by their names.
constexpr const char* modelTask = "read model";
constexpr const char* imageTask = "read image";
constexpr const char* writeTask = "write model";

/// What a process is told that reads a file.
struct VFFORMATS_EXPORT ReadRequest
{
    std::string path;                   ///< absolute
    std::vector<std::string> sideFiles; ///< that a model may name; see findSideFiles()

    /// Returns it as the argument of a task.
    std::string argument() const;
    static ReadRequest of(std::string_view argument);
};

/// Returns whether requireSandbox() was called.
VFFORMATS_EXPORT bool isSandboxRequired();

/// Returns the path of the executable with the tasks: velaforge-reader, or that of useReaderProgram().
VFFORMATS_EXPORT std::string readerProgram();

/// Returns texts in one, and what they were.
VFFORMATS_EXPORT std::string joinTexts(const std::vector<std::string>& texts);
VFFORMATS_EXPORT std::vector<std::string> splitTexts(std::string_view joined);

} // namespace vfFormats
