// SPDX-License-Identifier: MIT
#include <velaforge/modules/MinimalUiSetup.h>

#include <velaforge/commands/CommandItem.h>

#include <string>
#include <vector>

namespace vfApplication {

namespace {

/// Keeps a handle allocated for the process, and reachable, so that a leak checker can tell it from a mistake.
CommandItem& kept(CommandItem* item)
{
    static auto& all = *new std::vector<const CommandItem*>;
    all.push_back(item);
    return *item;
}

} // namespace

MinimalUiSetup::MinimalUiSetup() = default;

MinimalUiSetup::~MinimalUiSetup() = default;

void MinimalUiSetup::setupMenus(CommandItem* root)
{
    CommandItem file(root);
    file.setCommand("&File", nullptr);
    file << "vfApplicationQt::ActionOpen"
         << "vfApplicationQt::ActionExit";
}

void MinimalUiSetup::setupViewMenus(const char* viewName, CommandItem* root)
{
    if (std::string(viewName) == "View")
        setupMenus(root);
}

void MinimalUiSetup::setupToolbars(CommandItem* root)
{
    // A handle of its own that stays, by contract: a toolkit side may hold on to it.
    CommandItem& standard = kept(new CommandItem(root));
    (standard << "vfApplicationQt::CommandAbout").setCommand("Standard", nullptr);
}

} // namespace vfApplication
