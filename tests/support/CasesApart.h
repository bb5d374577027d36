// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vfTest {

/// Gives this process a home directory and XDG directories below a directory, and takes away what would let the
/// surroundings of a test decide how it ends: displays, search paths and levels of notification.
void isolate(const std::string& home);

/// Runs test cases one after another, each in a forked process with a home directory of its own.
///
/// Singletons are never rebuilt, so a case must not meet those of the case before it. A fork of a process that has
/// run none yet is as good as a new process, and spares each case the loading of the program and its libraries.
///
/// Prints a line for each case, and before it, when the case failed, all that it printed. A case passes only if its
/// process tells so and then ends with status 0; crashes, early exits and leaks at the end fail it.
///
/// @param chosen  test suites ("FileHistory") or single cases ("FileHistory.KeepsItsOrder"); all when empty
/// @param secondsAllowed  a case that takes longer is killed, with the processes that it started, and fails
/// @return the exit status of the program: 0 when no case failed and one was run at least
int runCasesApart(const std::vector<std::string>& chosen, int secondsAllowed);

} // namespace vfTest
