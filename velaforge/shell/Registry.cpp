// SPDX-License-Identifier: MIT
#include <velaforge/shell/Registry.h>

namespace vfApplication {

Registry::Registry() : Referenced(nullptr, true) {}

Registry::Registry(const Registry& other) = default;

Registry::Registry(Registry&& other) : Registry(static_cast<const Registry&>(other)) {}

Registry& Registry::operator=(const Registry& other) = default;

Registry& Registry::operator=(Registry&& other)
{
    return *this = static_cast<const Registry&>(other);
}

Registry::~Registry() = default;

Registry& Registry::instance()
{
    static Registry registry;
    return registry;
}

OptionsPageManager& Registry::getOptionsPageManager()
{
    return m_optionsPageManager;
}

RegistryPrivate* Registry::getImp() const
{
    return nullptr; // the handle has no body
}

} // namespace vfApplication
