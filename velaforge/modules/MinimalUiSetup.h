// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/UiSetup.h>

namespace vfApplication {

/// The user interface of a program that declares none: a file menu to open and exit, a toolbar with "about".
///
/// The names are those of commands of the toolkit side.
class VFAPPLICATION_EXPORT MinimalUiSetup : public UiSetup
{
public:
    MinimalUiSetup();
    ~MinimalUiSetup() override;

    /// "&File" with "vfApplicationQt::ActionOpen" and "vfApplicationQt::ActionExit".
    void setupMenus(CommandItem* root) override;

    /// The same for views of the name "View", nothing for others.
    void setupViewMenus(const char* viewName, CommandItem* root) override;

    /// "Standard" with "vfApplicationQt::CommandAbout".
    void setupToolbars(CommandItem* root) override;

    void declareExtraA() override {}
    void declareExtraB() override {}
    void declareExtraC() override {}
    void declareExtraD() override {}
    void declareExtraE() override {}
    void declareExtraF() override {}
};

} // namespace vfApplication
