// SPDX-License-Identifier: MIT
#include <velaforge/modules/MinimalUiSetup.h>

#include <velaforge/base/LeakForProcess.h>
#include <velaforge/commands/CommandItem.h>

#include <string>

namespace vfApplication {

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
    // By contract this handle is never deleted.
    auto* standard = new CommandItem(root);
    vfBase::leakForProcess(standard);
    (*standard << "vfApplicationQt::CommandAbout").setCommand("Standard", nullptr);
}

} // namespace vfApplication
