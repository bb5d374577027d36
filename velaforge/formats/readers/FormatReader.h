// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Format.h>
#include <velaforge/formats/ReadOutcome.h>

#include <string>
#include <vector>

namespace vfFormats {

constexpr const char* noReader = "no reader for this format is installed";

/// Has a file read by those that read its format, one after another. The scene is as they return it, and not validated.
ReadOutcome readAs(const Format& format, const std::string& path);

/// Loads what reads a file and the files that it may name, before the process is locked down. Opens none of them.
/// @param others  the files that it may name
void loadReaders(const std::string& path, const std::vector<std::string>& others);

/// @return whether a library is installed that reads the format
bool hasReaderOf(const Format& format);

/// @return why OpenSceneGraph did not read a file, in one line
std::string reasonOf(const std::string& message);

} // namespace vfFormats
