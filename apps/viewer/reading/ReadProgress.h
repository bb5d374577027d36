// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

namespace vfViewer {

/// The progress of a reader process, in memory that it shares with the program.
struct ReadProgress
{
    enum Stage : std::uint32_t
    {
        Reading,   ///< the file
        Preparing, ///< the scene, to be shown
        Sending,   ///< the scene, to the program
        Writing    ///< the scene, to a file
    };

    std::atomic<std::uint32_t> stage{Reading};

    /// Within the file, in thousandths, where the reader tells it; 0 otherwise.
    std::atomic<std::uint32_t> thousandths{0};

    // --- for readers; without anybody who waits they do nothing

    /// From here on this process tells its progress at the beginning of that file in memory.
    static void share(int file);
    static void tell(Stage stage);
    static void tell(std::uint64_t done, std::uint64_t all);

    /// Maps the progress of a reader process.
    /// @return null when that fails; otherwise to be released by letGo()
    static const ReadProgress* watch(int file);
    static void letGo(const ReadProgress* progress);
};

} // namespace vfViewer
