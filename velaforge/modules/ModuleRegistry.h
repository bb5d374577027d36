// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/AssociativeIterator.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/VfString.h>

#include <memory>
#include <string>

namespace vfApplication {

class Module;
class ModuleRegistryPrivate;

/// The owner of the modules of the process.
///
///     auto* registry = vfApplication::ModuleRegistry::instance(false);
///     registry->addModule(new Measuring(setup));
///     registry->getModule("solar::Measuring");  // the module, until it is removed
///
/// The first use looks for modules in the directory "vfModules-<version>" on OpenSceneGraph's library path; see
/// ModuleRegistryPrivate. In a program that is the constructor of Application. Modules outlive the application and go
/// when the process ends. addModule, removeModule and getModule may be called on several threads at once.
class VFAPPLICATION_EXPORT ModuleRegistry
{
public:
    using ActiveModules = vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>;
    using ModuleFiles = vfBase::Map<vfBase::VfString, vfBase::VfString>;

    ModuleRegistry(const ModuleRegistry&) = delete;
    ModuleRegistry& operator=(const ModuleRegistry&) = delete;

    /// @param erase  lets go of this object for good; the modules stay
    /// @return the one object; null once it was erased
    static ModuleRegistry* instance(bool erase);

    /// Takes a module over, under its id, in place of one that has the same id. Null is ignored.
    void addModule(Module* module);

    /// Lets the module go that stands under the id of @p module, be it that object or another, and destroys it if
    /// nothing else holds it: @p module must not be used afterwards. Null is ignored.
    void removeModule(Module* module);

    /// @return the module of that id, which stays the registry's; null if there is none
    Module* getModule(const std::string& id) const;

    /// @return a cursor over the modules by id; for the start-up phase, or for one thread
    vfBase::AssociativeIterator<ActiveModules> getActiveModuleMap() const;

    /// @return a cursor over the files found, by module name: also those that are disabled or could not be opened
    vfBase::AssociativeIterator<ModuleFiles> getModuleInfoMap() const;

private:
    ModuleRegistry();
    ~ModuleRegistry();

    ModuleRegistryPrivate* d; ///< not owned
};

} // namespace vfApplication
