// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vfViewer {

/// Has the memory of this process come in large pages, where the system has them for whoever asks, and kept when it is
/// given back. For a process that needs much memory for a short time: a program that draws a few pictures and ends, of whose
/// time a fault for every four kilobytes takes a fifth, or a reader of a large file. To be called before there are threads.
/// @param room  bytes of addresses for it; memory is taken as it is used
void useLargePages(std::size_t room = std::size_t(256) * 1024 * 1024);

} // namespace vfViewer
