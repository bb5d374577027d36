// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

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

/// Maximum sizes of a script and of a line, in bytes.
constexpr std::size_t scriptLimit = 16 * 1024 * 1024;
constexpr std::size_t scriptLineLimit = 64 * 1024;

/// Reads a script: one command per line. Skips empty lines, lines that begin with "#", a byte order mark at
/// the beginning and carriage returns at the ends of lines.
/// @param path    the file, which may be a pipe; "-" for standard input
/// @param lines   receives the commands
/// @param reason  set to the reason if the result is false
/// @return false if the script cannot be read, is longer than scriptLimit, or is not text
bool readScript(const vfBase::VfString& path, std::vector<ScriptLine>& lines, vfBase::VfString& reason);

} // namespace vfApplication
