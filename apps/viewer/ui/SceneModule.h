// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/MinimalUiSetup.h>
#include <velaforge/modules/Module.h>

namespace vfViewer {

/// The menu and the toolbar of what can be done to a scene.
class SceneUiSetup : public vfApplication::MinimalUiSetup
{
public:
    void setupMenus(vfApplication::CommandItem* root) override;
    void setupToolbars(vfApplication::CommandItem* root) override;

private:
    static void setupInspectMenu(vfApplication::CommandItem* root);
};

/// Looking into scenes and changing them: the commands, and the dock window that shows a scene as a tree.
class SceneModule : public vfApplication::Module
{
public:
    explicit SceneModule(const vfApplication::UiSetup& setup);

    const char* getId() const override;
    const char* getModuleName() const override;
    const char* getModuleDescription() const override;

    /// Makes the dock windows of the module.
    static void addDockWindows();
};

} // namespace vfViewer
