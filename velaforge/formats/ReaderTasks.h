// SPDX-License-Identifier: MIT
#pragma once

namespace vfIsolation {
class Helper;
}

namespace vfFormats {

/// Adds the tasks that read and write files to a helper executable. velaforge-reader is such an executable. A program with
/// formats of its own makes another one, adds them by addFormat() and addFormatCode(), and calls
/// useReaderProgram(). Link vfFormatReaders, which a program that shows models does not.
/// @param helper  the helper; run it afterwards
void addReaderTasks(vfIsolation::Helper& helper);

} // namespace vfFormats
