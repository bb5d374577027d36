// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/shell/OptionsPageManager.h>

namespace vfApplication {

class RegistryPrivate;

/// Gives access to the lists to which the modules of the process add: the options pages.
///
/// A handle without a body. Copies share the list of options pages, see OptionsPageManager.
class VFAPPLICATION_EXPORT Registry : public vfBase::Referenced
{
public:
    /// Returns the registry of the process.
    static Registry& instance();

    /// Shares the list of @p other.
    Registry(const Registry& other);

    /// Shares the list of @p other, which keeps it.
    Registry(Registry&& other);

    /// Shares the list of @p other.
    Registry& operator=(const Registry& other);

    /// Shares the list of @p other, which keeps it.
    Registry& operator=(Registry&& other);
    ~Registry() override;

    /// Returns the list of options pages.
    OptionsPageManager& getOptionsPageManager();

private:
    Registry();
    RegistryPrivate* getImp() const;

    OptionsPageManager m_optionsPageManager;
};

} // namespace vfApplication
