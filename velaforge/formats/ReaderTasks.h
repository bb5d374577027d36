// SPDX-License-Identifier: MIT
#pragma once

namespace vfIsolation {
class Helper;
}

namespace vfFormats {

/// Adds the tasks to a helper that read and write files; see ReadRequest and WriteRequest.
void addReaderTasks(vfIsolation::Helper& helper);

} // namespace vfFormats
