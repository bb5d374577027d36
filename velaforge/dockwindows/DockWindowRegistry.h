// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindow;
class DockWindowRegistryPrivate;

/// Makes the dock windows that plug-ins offer.
///
/// Plug-ins register producers with a DockWindowRegistryPrivate::Proxy. There is no lock: load plug-ins one
/// after another, and make windows on the thread of the user interface.
class VFAPPLICATION_EXPORT DockWindowRegistry
{
public:
    DockWindowRegistry(const DockWindowRegistry&) = delete;
    DockWindowRegistry& operator=(const DockWindowRegistry&) = delete;

    /// Returns the only registry. If @p erase is true, deletes this object instead, for the rest of the
    /// process; the producers stay.
    /// @return null after it was deleted
    static DockWindowRegistry* instance(bool erase);

    /// Has the producer registered under the pointer @p key make a window. An equal text at another address
    /// is another key.
    /// @return the window, owned by the caller; null for an unknown key
    DockWindow* create(const char* key);

private:
    DockWindowRegistry();
    ~DockWindowRegistry();

    DockWindowRegistryPrivate* d; ///< not owned
};

} // namespace vfApplication
