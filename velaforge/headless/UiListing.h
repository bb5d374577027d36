// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>
#include <velaforge/headless/Export.h>

#include <iosfwd>

namespace vfApplication {

/// Has every active module whose declaration is there declare its menus below one root: the application first, then the
/// others in order of their ids, so that a module may add to the menus of those before it.
/// @return the root
VFAPPLICATIONHEADLESS_EXPORT CommandItem declaredMenus();

/// The same for the toolbars.
VFAPPLICATIONHEADLESS_EXPORT CommandItem declaredToolbars();

/// Writes what the program declares of its user interface as a tree: menus, toolbars, the dock windows that are there,
/// and the options pages by group. A command that nobody registered is marked.
VFAPPLICATIONHEADLESS_EXPORT void listUi(std::ostream& out);

} // namespace vfApplication
