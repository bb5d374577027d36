// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/shell/OptionsPageManager.h>

namespace vfApplication {

class RegistryPrivate;

/// The holder of what the modules of the process announce: so far the options pages.
///
/// A handle without a body. Copies share the list of the options pages; only one of them may be destroyed, see
/// OptionsPageManager.
class VFAPPLICATION_EXPORT Registry : public vfBase::Referenced
{
public:
    /// @return the one registry, until the process ends
    static Registry& instance();

    Registry(const Registry& other);
    Registry(Registry&& other);
    Registry& operator=(const Registry& other);
    Registry& operator=(Registry&& other);
    ~Registry() override;

    OptionsPageManager& getOptionsPageManager();

private:
    Registry();
    RegistryPrivate* getImp() const;

    OptionsPageManager m_optionsPageManager;
};

} // namespace vfApplication
