// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>
#include <velaforge/formats/ReadOutcome.h>
#include <velaforge/formats/internal/FlatScene.h>
#include <velaforge/formats/internal/LargeArrayOwner.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <atomic>
#include <cstdint>
#include <vector>

namespace vfFormats {

/// The reason when something was lost on the way.
constexpr const char* notTransferred = "the process that read it did not hand it on whole";

/// Sends what came of reading to another process, through a file in memory.
///
/// Arrays, indices and images travel as they lie in memory, the rest of the scene as lists of numbers: see FlatScene. Large
/// arrays may stay where they are, and the other process copies them from the memory of this one: a file in memory costs
/// more to fill than a large model takes to read.
class VFFORMATS_EXPORT SceneSender
{
public:
    enum class LargeArrays
    {
        InFile,
        InThisProcess ///< for as long as the sender lives
    };

    /// @param file  made by makeSharedMemory(), empty; stays the caller's
    explicit SceneSender(int file) : m_file(file) {}

    SceneSender(const SceneSender&) = delete;
    SceneSender& operator=(const SceneSender&) = delete;

    /// Writes all to the file.
    /// @param outcome  gets a warning for each kind of things in the scene that is left out
    /// @return the size of what was written; 0 when there was no room, and the file may be used again
    long long send(ReadOutcome& outcome, LargeArrays place,
                   SceneSharing sharing = SceneSharing::OtherThreads);

private:
    int m_file;
    std::vector<osg::ref_ptr<const osg::Referenced>> m_kept;
};

/// Takes what SceneSender sent, and validates it before the first object is made: counts, references, sizes, classes; then
/// the indices. Never throws. May be called on any thread.
/// @param bytes  at an address that is a multiple of 16; must not change during the call
/// @param stop   when it becomes true, returns as soon as possible without the scene
VFFORMATS_EXPORT ReadOutcome receiveScene(const void* bytes, std::size_t size, const LargeArrayOwner& owner,
                                          const std::atomic<bool>& stop);

/// The same for bytes among which all arrays are.
VFFORMATS_EXPORT ReadOutcome receiveScene(const void* bytes, std::size_t size);

} // namespace vfFormats
