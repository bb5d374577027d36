// SPDX-License-Identifier: MIT
#pragma once

namespace vfApplication {

class DocManager;

/// Calls modify(false) for each document that undo or redo has led back to the state in which it was read or saved. Shells
/// call this after each command.
void followHistories(DocManager& manager);

} // namespace vfApplication
