// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/Module.h>

namespace vfApplication {

/// The module that stands for the application itself. Application makes it of what its setup declares, and
/// ModuleRegistry keeps it under "vfApplication::Application".
class VFAPPLICATION_EXPORT vfAppModule : public Module
{
public:
    explicit vfAppModule(const UiSetup& uiSetup);
    ~vfAppModule() override;

    /// @return "vfApplication::Application"
    const char* getId() const override;

    /// @return "vfAppModule"
    const char* getModuleName() const override;
};

} // namespace vfApplication
