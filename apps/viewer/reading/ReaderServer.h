// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ReadOutcome.h"

#include <string>

namespace vfViewer {

/// What the processes that the launcher makes can do.
struct ReaderTasks
{
    ReadOutcome (*readModel)(const std::string& path);
    ReadOutcome (*readImage)(const std::string& path);

    /// Writes a scene to a new file. @return why it could not be written; empty when it was
    std::string (*write)(osg::Node& scene, const std::string& path);
};

/// The life of the launcher: makes a process for each request that comes through the socket, and ends when the program does.
///
/// Each process does one task, within its limits of memory, leaves no core file, and ends with the launcher. The launcher
/// has no threads and reads no files itself.
[[noreturn]] void serveReaders(int socket, const ReaderTasks& tasks);

} // namespace vfViewer
