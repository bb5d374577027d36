// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleRegistry.h>

#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistryPrivate.h>

#include <OpenThreads/ScopedLock>

namespace vfApplication {

using Lock = OpenThreads::ScopedLock<OpenThreads::ReentrantMutex>;

ModuleRegistry::ModuleRegistry() : d(ModuleRegistryPrivate::instance(false)) {}

ModuleRegistry::~ModuleRegistry()
{
    d = nullptr;
}

ModuleRegistry* ModuleRegistry::instance(bool erase)
{
    static struct Kept
    {
        ~Kept() { delete registry; }
        ModuleRegistry* registry = new ModuleRegistry;
    } kept;
    if (erase) {
        delete kept.registry;
        kept.registry = nullptr;
    }
    return kept.registry;
}

void ModuleRegistry::addModule(Module* module)
{
    if (!module)
        return;
    const Lock lock(d->mutex);
    const vfBase::VfString key(module->getId());
    d->activeModuleMap[key] = std::shared_ptr<Module>(module);
}

void ModuleRegistry::removeModule(Module* module)
{
    if (!module)
        return;
    const Lock lock(d->mutex);
    // Out of the table first, so that a module may ask the registry while it is destroyed.
    const std::shared_ptr<Module> released = d->activeModuleMap.take(vfBase::VfString(module->getId()));
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
