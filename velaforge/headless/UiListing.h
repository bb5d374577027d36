// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/headless/Export.h>

#include <iosfwd>

namespace vfApplication {

/// Writes what the program declares of its user interface as a tree: menus, toolbars, the dock windows that are there,
/// and the options pages by group. A command that nobody registered is marked.
VFAPPLICATIONHEADLESS_EXPORT void listUi(std::ostream& out);

} // namespace vfApplication
