// SPDX-License-Identifier: MIT
#pragma once

namespace vfIsolation {

/// The process from which the helper processes of a program come. It has one thread, reads no file, and ends with the program,
/// and the helper processes with it.
[[noreturn]] void runLauncher();

} // namespace vfIsolation
