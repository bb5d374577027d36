// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowRegistry.h>

#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <memory>

namespace vfApplication {

DockWindowRegistry::DockWindowRegistry() : d(DockWindowRegistryPrivate::instance(false)) {}

DockWindowRegistry::~DockWindowRegistry()
{
    d = nullptr;
}

DockWindowRegistry* DockWindowRegistry::instance(bool erase)
{
    return vfBase::processSingleton(erase, [] {
        return std::shared_ptr<DockWindowRegistry>(new DockWindowRegistry,
                                                   [](DockWindowRegistry* handle) { delete handle; });
    });
}

DockWindow* DockWindowRegistry::create(const char* key)
{
    const auto found = d->producers.find(key);
    // A reference of its own: the producer may register another one under its key while it runs.
    const std::shared_ptr<DockWindowRegistryPrivate::Producer> producer =
        found == d->producers.end() ? nullptr : found->second;
    return producer ? producer->create() : nullptr;
}

DockWindowRegistryPrivate::DockWindowRegistryPrivate() = default;

DockWindowRegistryPrivate::~DockWindowRegistryPrivate() = default;

DockWindowRegistryPrivate::Proxy::Proxy(Producer* producer) : Base::Proxy(producer) {}

DockWindowRegistryPrivate* DockWindowRegistryPrivate::instance(bool erase)
{
    return vfBase::processSingleton(
        erase, [] { return std::shared_ptr<DockWindowRegistryPrivate>(new DockWindowRegistryPrivate); });
}

} // namespace vfApplication
