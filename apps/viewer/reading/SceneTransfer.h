// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ModelReader.h"

#include <atomic>

namespace vfViewer {

/// At the start of a file that carries a scene; see ReadProgress.
constexpr long long transferHeaderSize = 4096;

/// Puts what came of reading into a file in memory, so that another process can take it. Points, normals and the like
/// travel as they lie in memory; only what is left of the scene is written out by OpenSceneGraph.
///
/// The scene loses these arrays: it is for this process's last use.
/// @return the size of what was written, 0 when there was no room
long long sendOutcome(int file, ReadOutcome& outcome);

/// Takes what sendOutcome() put there. May be done on any thread.
/// @param stop  when it becomes true the scene is left away as soon as possible
ReadOutcome receiveOutcome(int file, long long size, const std::atomic<bool>& stop);

} // namespace vfViewer
