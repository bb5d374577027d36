// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleRegistry.h>

#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistryPrivate.h>

#include <OpenThreads/ScopedLock>

#include <algorithm>
#include <utility>

namespace vfApplication {

using Lock = OpenThreads::ScopedLock<OpenThreads::ReentrantMutex>;

ModuleRegistry::ModuleRegistry() : d(ModuleRegistryPrivate::instance(false)) {}

ModuleRegistry::~ModuleRegistry()
{
    d = nullptr;
}

ModuleRegistry* ModuleRegistry::instance(bool erase)
{
    return vfBase::processSingleton(erase, [] {
        return std::shared_ptr<ModuleRegistry>(new ModuleRegistry,
                                               [](ModuleRegistry* handle) { delete handle; });
    });
}

void ModuleRegistry::addModule(Module* module)
{
    if (!module)
        return;
    // Released after the lock: the destructor of a module may use the registry.
    std::shared_ptr<Module> former;
    std::shared_ptr<Module> added;
    const Lock lock(d->mutex);
    auto& modules = d->activeModuleMap.asStdMap();
    const auto present = std::find_if(modules.begin(), modules.end(),
                                      [module](const auto& entry) { return entry.second.get() == module; });
    added = present == modules.end() ? std::shared_ptr<Module>(module) : present->second;
    const vfBase::VfString key(module->getId());
    std::shared_ptr<Module>& entry = modules[key];
    if (present != modules.end() && present->first != key)
        modules.erase(present); // its id has changed
    former.swap(entry);
    entry = std::move(added);
}

void ModuleRegistry::removeModule(Module* module)
{
    if (!module)
        return;
    // Removed from the table first and released after the lock: its destructor may use the registry.
    std::shared_ptr<Module> released;
    const Lock lock(d->mutex);
    released = d->activeModuleMap.take(vfBase::VfString(module->getId()));
}

Module* ModuleRegistry::getModule(const std::string& id) const
{
    const Lock lock(d->mutex);
    const auto found = d->activeModuleMap.asStdMap().find(vfBase::VfString(id));
    return found == d->activeModuleMap.end() ? nullptr : found->second.get();
}

vfBase::AssociativeIterator<ModuleRegistry::ActiveModules> ModuleRegistry::getActiveModuleMap() const
{
    return d->activeModuleMap.getIterator();
}

vfBase::AssociativeIterator<ModuleRegistry::ModuleFiles> ModuleRegistry::getModuleInfoMap() const
{
    return d->moduleInfoMap.getIterator();
}

} // namespace vfApplication
