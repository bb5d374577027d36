// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/UiSetup.h>

namespace vfApplication {

/// The user interface of a program that declares none: a file menu with "open" and "exit", and a toolbar with
/// "about".
///
/// The toolkit side registers commands under the names used here.
class VFAPPLICATION_EXPORT MinimalUiSetup : public UiSetup
{
public:
    /// Makes a declaration of its own.
    MinimalUiSetup();
    ~MinimalUiSetup() override;

    /// Appends the menu "&File" with the items "vfApplicationQt::ActionOpen" and
    /// "vfApplicationQt::ActionExit" to @p root.
    void setupMenus(CommandItem* root) override;

    /// Calls setupMenus with @p root if @p viewName is "View"; does nothing for other views. @p viewName must
    /// not be null.
    void setupViewMenus(const char* viewName, CommandItem* root) override;

    /// Appends the toolbar "Standard" with the item "vfApplicationQt::CommandAbout" to @p root.
    void setupToolbars(CommandItem* root) override;

    /// Does nothing.
    void declareExtraA() override {}
    /// Does nothing.
    void declareExtraB() override {}
    /// Does nothing.
    void declareExtraC() override {}
    /// Does nothing.
    void declareExtraD() override {}
    /// Does nothing.
    void declareExtraE() override {}
    /// Does nothing.
    void declareExtraF() override {}
};

} // namespace vfApplication
