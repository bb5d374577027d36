// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <string>
#include <vector>

namespace vfIsolation {

/// What holds after enterSandbox(), found by trying rather than by asking.
struct VFISOLATION_EXPORT SandboxState
{
    int landlockVersion = 0;     ///< of the interface that is in force; 0 for none
    bool hasCallFilter = false;  ///< seccomp
    bool refusesFiles = false;   ///< a directory could not be opened
    bool refusesSockets = false; ///< a socket could not be made

    /// Returns whether all of it holds.
    bool isComplete() const { return hasCallFilter && refusesFiles && refusesSockets; }

    /// Returns what is missing, as "Landlock is not there"; empty if isComplete().
    std::string describe() const;
};

/// Locks this process down for good: it can read the named files and what it has open, write what it has open, use memory,
/// locks, clocks and threads, and nothing else. It opens no other file, makes no socket and no process, sends no signal to
/// others, and makes no memory executable, so that libraries must be loaded before.
///
/// Landlock holds files back, seccomp the calls; where a kernel lacks one of them the other one holds alone. To be called
/// while the process has one thread; those that it starts later are held, too.
/// @param readableFiles  absolute paths; what is missing or no regular file is passed over
VFISOLATION_EXPORT SandboxState enterSandbox(const std::vector<std::string>& readableFiles);

/// Which of the two layers enterSandbox() uses. For tests of one of them alone.
enum class SandboxLayers
{
    All,
    Landlock,
    CallFilter
};

/// Does the same with some of the layers.
/// @param readableFiles  as above
/// @param layers         those to use
VFISOLATION_EXPORT SandboxState enterSandbox(const std::vector<std::string>& readableFiles,
                                             SandboxLayers layers);

} // namespace vfIsolation
