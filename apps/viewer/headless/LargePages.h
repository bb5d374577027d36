// SPDX-License-Identifier: MIT
#pragma once

namespace vfViewer {

/// Has the memory of this process come in large pages, where the system has them for whoever asks, and kept when it is
/// given back. For a program that draws a few pictures in memory and ends: images, buffers and what the software driver
/// keeps of each triangle are some hundred megabytes, and a fault for every four kilobytes of them takes a fifth of the
/// time. To be called before there are threads.
void useLargePages();

} // namespace vfViewer
