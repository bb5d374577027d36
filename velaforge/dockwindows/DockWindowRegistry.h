// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindow;
class DockWindowRegistryPrivate;

/// Makes the dock windows that plug-ins offer.
///
/// Plug-ins register producers with a DockWindowRegistryPrivate::Proxy. There is no lock: plug-ins are loaded one after
/// the other, and windows made on the thread of the user interface.
class VFAPPLICATION_EXPORT DockWindowRegistry
{
public:
    DockWindowRegistry(const DockWindowRegistry&) = delete;
    DockWindowRegistry& operator=(const DockWindowRegistry&) = delete;

    /// @param erase  lets go of this object for good; the producers stay
    /// @return the one object; null once it was erased
    static DockWindowRegistry* instance(bool erase);

    /// @param key  the pointer under which a producer registered; an equal text at another address is another key
    /// @return a new window, the caller's; null for an unknown key
    DockWindow* create(const char* key);

private:
    DockWindowRegistry();
    ~DockWindowRegistry();

    DockWindowRegistryPrivate* d; ///< not owned
};

} // namespace vfApplication
