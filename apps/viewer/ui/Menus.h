// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/commands/CommandItem.h>

namespace vfViewer {

/// @return the menu of that name, made in front of the help menu if it is not there yet
inline vfApplication::CommandItem findOrAddMenu(vfApplication::CommandItem* root, const char* name)
{
    using vfApplication::CommandItem;
    CommandItem menu = root->find(name);
    if (menu.isValid())
        return menu;
    menu = CommandItem(root);
    menu.setCommand(name, nullptr);
    const CommandItem help = root->find("&Help");
    if (help.isValid()) {
        root->remove(help);
        root->append(help);
    }
    return menu;
}

} // namespace vfViewer
