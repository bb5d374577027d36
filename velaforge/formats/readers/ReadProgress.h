// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vfIsolation {
class TaskContext;
}

namespace vfFormats {

/// Tells the program how far a process has come that reads or writes a file. In other processes it does nothing.
class ReadProgress
{
public:
    enum Stage : std::uint32_t
    {
        Reading,   ///< the file
        Preparing, ///< the scene, to be shown
        Sending,   ///< the scene, to the program
        Writing    ///< the scene, to a file
    };

    /// From here on this process tells its progress through a task.
    /// @param context  of the task that reads
    static void share(vfIsolation::TaskContext* context);
    static void tell(Stage stage);

    /// Tells how much of the file is read or written.
    static void tell(std::uint64_t done, std::uint64_t all);
};

} // namespace vfFormats
