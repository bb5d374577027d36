// SPDX-License-Identifier: MIT
#include <velaforge/dockwindows/DockWindowRegistry.h>

#include <velaforge/dockwindows/DockWindow.h>
#include <velaforge/dockwindows/DockWindowRegistryPrivate.h>

#include <memory>
#include <utility>

namespace vfApplication {

DockWindowRegistry::DockWindowRegistry() : d(DockWindowRegistryPrivate::instance(false)) {}

DockWindowRegistry::~DockWindowRegistry()
{
    d = nullptr;
}

DockWindowRegistry* DockWindowRegistry::instance(bool erase)
{
    static struct Kept
    {
        ~Kept() { delete registry; }
        DockWindowRegistry* registry = new DockWindowRegistry;
    } kept;
    if (erase) {
        delete kept.registry;
        kept.registry = nullptr;
    }
    return kept.registry;
}

DockWindow* DockWindowRegistry::create(const char* key)
{
    const auto found = d->producers.find(key);
    // A count of its own: the producer may register another one in its place while it works.
    const std::shared_ptr<DockWindowRegistryPrivate::Producer> producer =
        found == d->producers.end() ? nullptr : found->second;
    return producer ? producer->create() : nullptr;
}

DockWindowRegistryPrivate::DockWindowRegistryPrivate() = default;

DockWindowRegistryPrivate::~DockWindowRegistryPrivate() = default;

DockWindowRegistryPrivate::Proxy::Proxy(Producer* producer) : Base::Proxy(producer) {}

DockWindowRegistryPrivate* DockWindowRegistryPrivate::instance(bool erase)
{
    static std::shared_ptr<DockWindowRegistryPrivate> registry(new DockWindowRegistryPrivate);
    if (erase) {
        const std::shared_ptr<DockWindowRegistryPrivate> released = std::move(registry);
        return nullptr;
    }
    return registry.get();
}

} // namespace vfApplication
