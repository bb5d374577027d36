// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/modules/Module.h>

namespace vfApplication {

/// The base class of modules that a plug-in makes.
class VFAPPLICATION_EXPORT ModuleInterface : public Module
{
public:
    /// Makes a module without a declaration, as Module() does.
    ModuleInterface();
    ~ModuleInterface() override;

    /// Called after the user chose another language. This library does not call it, see
    /// Module::onLanguageChange.
    virtual void languageChanged() = 0;
};

} // namespace vfApplication
