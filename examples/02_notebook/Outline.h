// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>

/// The menus of the program.
class NotebookMenus : public vfApplication::MinimalUiSetup
{
public:
    void setupMenus(vfApplication::CommandItem* root) override;
};

/// A module with a dock window of its own.
class OutlineModule : public vfApplication::Module
{
public:
    explicit OutlineModule(const vfApplication::UiSetup& menus);

    const char* getId() const override { return "notebook::Outline"; }
    const char* getModuleName() const override { return "Outline"; }
};
