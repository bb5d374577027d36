// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ModelReader.h"

#include <atomic>
#include <vector>

namespace vfViewer {

/// At the start of a file that carries a scene; see ReadProgress.
constexpr long long transferHeaderSize = 4096;

/// The reason when something was lost on the way.
constexpr const char* notHandedOn = "the process that read it did not hand it on whole";

/// Loads what scenes are written and read with, which takes some milliseconds; whoever needs it first does it otherwise.
void loadSceneFormat();

/// Hands what came of reading on to another process, through a file in memory.
///
/// Points, normals and the like travel as they lie in memory; only what is left of the scene is written out by
/// OpenSceneGraph. Where they are many they stay where they are, and the other process looks into the memory of this one: a
/// file in memory costs more to fill than a large model takes to read.
class HandOver
{
public:
    explicit HandOver(int file);
    ~HandOver();

    HandOver(const HandOver&) = delete;
    HandOver& operator=(const HandOver&) = delete;

    /// Puts everything into the file but large arrays. The scene loses its arrays: it is for this process's last use.
    /// @return the size of what was written, 0 when there was no room
    long long put(ReadOutcome& outcome);

    /// Puts the large arrays into the file as well, for a process that may not look into this one.
    /// @return false when there was no room
    bool putArrays() const;

    struct Block;

private:
    struct Kept;

    int m_file;
    std::vector<Kept> m_kept;
};

/// @return whether the system lets this process look into one that was split off it
bool canLookInto(int process);

/// Takes what HandOver put there. May be done on any thread.
/// @param process  the one that handed it on, which must be there until this is done; 0 when it put its arrays into the
///                 file, too
/// @param stop  when it becomes true the scene is left away as soon as possible
ReadOutcome receiveOutcome(int file, long long size, int process, const std::atomic<bool>& stop);

} // namespace vfViewer
