// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfVariant.h>
#include <velaforge/commands/CommandItem.h>

namespace vfViewer {

/// Whose texts they are, for those who translate them.
constexpr const char* translationContext = "vfViewer";

/// @return a new menu or toolbar at the end
inline vfApplication::CommandItem addMenu(vfApplication::CommandItem* parent, const char* name)
{
    vfApplication::CommandItem menu(parent);
    menu.setCommand(name, translationContext);
    return menu;
}

/// Adds a command. @param shortcut, icon  null for none
inline void addItem(vfApplication::CommandItem& menu, const char* command, const char* text,
                    const char* shortcut, const char* icon)
{
    vfApplication::CommandItem item(&menu);
    item.setCommand(command, translationContext);
    item.setProperty("text", vfBase::VfVariant(text), translationContext);
    if (shortcut)
        item.setProperty("shortcut", vfBase::VfVariant(shortcut), nullptr);
    if (icon)
        item.setProperty("icon", vfBase::VfVariant(icon), nullptr);
}

/// @return the menu of that name, made in front of the help menu if it is not there yet
inline vfApplication::CommandItem findOrAddMenu(vfApplication::CommandItem* root, const char* name)
{
    using vfApplication::CommandItem;
    CommandItem menu = root->find(name);
    if (menu.isValid())
        return menu;
    menu = addMenu(root, name);
    const CommandItem help = root->find("&Help");
    if (help.isValid()) {
        root->remove(help);
        root->append(help);
    }
    return menu;
}

} // namespace vfViewer
