// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>

#include <memory>
#include <string>
#include <vector>

namespace vfApplication {

class UiOptionsPage;
class UiSetup;

/// Returns the existing declarations of the active modules: the application's first, then the others in order
/// of the modules' ids, so that a module can add to the menus of those before it.
std::vector<UiSetup*> activeSetups();

/// Returns the declaration of the application itself; null if it does not exist.
UiSetup* applicationSetup();

/// Has every active module append its menus to a new root.
/// @return the root
CommandItem declaredMenus();

/// Does the same for the menus of views with that name.
CommandItem declaredViewMenus(const std::string& viewName);

/// Does the same for the toolbars.
CommandItem declaredToolbars();

/// Returns a new page for each class in Registry::getOptionsPageManager(), sorted by group and then by tab
/// order.
std::vector<std::unique_ptr<UiOptionsPage>> orderedOptionsPages();

/// Returns a label without the marks of mnemonics.
std::string plainLabel(const char* label);

} // namespace vfApplication
