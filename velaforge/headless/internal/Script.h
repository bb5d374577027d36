// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>
#include <velaforge/headless/Export.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vfApplication {

/// A line of a script that names a command.
struct ScriptLine
{
    std::string text;  ///< without blanks around it
    std::string where; ///< "<file>:<line>: ", for messages
};

/// A longer script, or a longer line, is not one that a person or a program meant.
constexpr std::size_t scriptLimit = 16 * 1024 * 1024;
constexpr std::size_t scriptLineLimit = 64 * 1024;

/// Reads a script to its end: one command a line. Empty lines and lines that begin with "#" are left out. A byte order mark
/// at the beginning and carriage returns at the ends of lines are ignored.
/// @param path    "-" for standard input; may be a pipe
/// @param reason  receives why it failed
/// @return false when the script cannot be read, is longer than scriptLimit, or is not text
VFAPPLICATIONHEADLESS_EXPORT bool readScript(const vfBase::VfString& path, std::vector<ScriptLine>& lines,
                                             vfBase::VfString& reason);

} // namespace vfApplication
