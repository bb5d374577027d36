// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/Module.h>

namespace vfApplication {

/// A module that a plug-in produces.
class VFAPPLICATION_EXPORT ModuleInterface : public Module
{
public:
    /// As Module().
    ModuleInterface();
    ~ModuleInterface() override;

    /// The user chose another language.
    virtual void languageChanged() = 0;
};

} // namespace vfApplication
