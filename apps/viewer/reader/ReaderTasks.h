// SPDX-License-Identifier: MIT
#pragma once

namespace vfIsolation {
class Helper;
}

namespace vfViewer {

/// Adds the tasks to a helper that read and write files; see ReadRequest and WriteRequest.
void addReaderTasks(vfIsolation::Helper& helper);

} // namespace vfViewer
