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

/// Owns the modules of the process.
///
///     auto* registry = vfApplication::ModuleRegistry::instance(false);
///     registry->addModule(new Measuring(setup));
///     registry->getModule("solar::Measuring");  // the module, until it is removed
///
/// The first call of instance searches the directory "vfModules-<version>" on OpenSceneGraph's library path
/// for modules, see ModuleRegistryPrivate; in a program, the constructor of Application makes that call.
/// Modules outlive the application and are destroyed when the process ends. addModule, removeModule and
/// getModule may be called on several threads at once.
class VFAPPLICATION_EXPORT ModuleRegistry
{
public:
    /// The active modules, by id.
    using ActiveModules = vfBase::Map<vfBase::VfString, std::shared_ptr<Module>>;
    /// The files found, by module name.
    using ModuleFiles = vfBase::Map<vfBase::VfString, vfBase::VfString>;

    ModuleRegistry(const ModuleRegistry&) = delete;
    ModuleRegistry& operator=(const ModuleRegistry&) = delete;

    /// Returns the only registry. If @p erase is true, deletes this object instead, for the rest of the
    /// process; the modules stay.
    /// @return null after it was deleted
    static ModuleRegistry* instance(bool erase);

    /// Takes ownership of @p module and releases the module that had the same id. Does nothing for null, and
    /// for a module that is there already.
    void addModule(Module* module);

    /// Releases the module that has the id of @p module, even if it is another object, and destroys it if
    /// nothing else references it. Do not use @p module afterwards. Does nothing for null.
    void removeModule(Module* module);

    /// Returns the module with the id @p id, which the registry owns; null if there is none.
    Module* getModule(const std::string& id) const;

    /// Returns a cursor over the active modules, by id. Takes no lock: for the start of the program, or for
    /// one thread.
    vfBase::AssociativeIterator<ActiveModules> getActiveModuleMap() const;

    /// Returns a cursor over the module files found, by module name, including those that are disabled or
    /// could not be opened. Takes no lock.
    vfBase::AssociativeIterator<ModuleFiles> getModuleInfoMap() const;

private:
    ModuleRegistry();
    ~ModuleRegistry();

    ModuleRegistryPrivate* d; ///< not owned
};

} // namespace vfApplication
