// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfFormats {

/// Restricts which files untrusted models may make the program read, and with which readers.
///
///     vfFormats::FileGate::install();   // early in main
///
/// Left alone, OpenSceneGraph loads reader plug-ins from the current directory first, and a model may name a script,
/// which then runs, or an address on the web, which is then fetched. Behind the gate plug-ins come from
/// OpenSceneGraph's own directory by absolute path, and only the formats listed here are read, also when one file
/// names another.
class FileGate
{
public:
    /// Puts the gate in front of all reading of this process. A second call changes nothing.
    static void install();

    /// Loads what reads the classes of OpenSceneGraph's own formats, which is loaded when a class is met otherwise.
    static void loadSceneClasses();

    /// A file is about to be read on this thread.
    static void noteFile(const std::string& path);

    /// @return the files noted since the last time on this thread, absolute, each once; a hundred at most
    static std::vector<std::string> takeFiles();

    /// @return what could not be read on this thread since the last call, "<name>: <reason>" each: textures that are
    ///         missing, scripts that were refused
    static std::vector<std::string> takeFailures();

    /// Adds one of them.
    static void noteFailure(const std::string& name, const std::string& reason);

    /// Returns why the file at @p path cannot be read, in words; empty when it is a regular file with contents that
    /// SideFiles admits.
    static std::string readError(const std::string& path);
};

} // namespace vfFormats
