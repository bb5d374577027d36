// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/headless/Export.h>

#include <iosfwd>

namespace vfApplication {

/// Writes the declared user interface to @p out, as a tree: menus, toolbars, existing dock windows, and
/// options pages by group. Marks commands that are not registered.
VFAPPLICATIONHEADLESS_EXPORT void listUi(std::ostream& out);

} // namespace vfApplication
