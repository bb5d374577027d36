// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/Module.h>

namespace vfApplication {

/// The module of the application itself. The constructor of Application makes it with the UiSetup of its
/// ApplicationSetup and adds it to ModuleRegistry under the id "vfApplication::Application".
class VFAPPLICATION_EXPORT vfAppModule : public Module
{
public:
    /// Makes a module that shares the body of @p uiSetup.
    explicit vfAppModule(const UiSetup& uiSetup);
    ~vfAppModule() override;

    /// Returns "vfApplication::Application".
    const char* getId() const override;

    /// Returns "vfAppModule".
    const char* getModuleName() const override;
};

} // namespace vfApplication
