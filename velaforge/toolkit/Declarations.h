// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>

#include <memory>
#include <string>
#include <vector>

namespace vfApplication {

class UiOptionsPage;
class UiSetup;

/// @return the declarations of the active modules, as far as they are there: the application's first, then the others in
///         order of the modules' ids, so that a module may add to the menus of those before it
std::vector<UiSetup*> activeSetups();

/// @return the declaration of the application itself; null when it is not there
UiSetup* applicationSetup();

/// Has every active module declare its menus below one root. @return the root
CommandItem declaredMenus();

/// The same for the menus of views of that name.
CommandItem declaredViewMenus(const std::string& viewName);

/// The same for the toolbars.
CommandItem declaredToolbars();

/// @return a new page for each class that was announced, the groups in order, and the pages of a group in order
std::vector<std::unique_ptr<UiOptionsPage>> orderedOptionsPages();

/// @return a label without the marks of shortcut letters
std::string plainLabel(const char* label);

} // namespace vfApplication
