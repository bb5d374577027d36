// SPDX-License-Identifier: MIT
#pragma once

namespace vfViewer {

/// Asks glibc for transparent huge pages, and to keep freed memory in this process. For a program that renders a few
/// pictures and ends: images, buffers and the software driver's triangles take some hundred megabytes, and a page fault
/// for every four kilobytes of them takes a fifth of the time. Does nothing where the system offers no huge pages on
/// request. Must be called before the process has threads.
void useLargePages();

} // namespace vfViewer
