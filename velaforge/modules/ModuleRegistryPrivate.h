// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/Registry.h>
#include <velaforge/base/RegistryObjectProducerInterface.h>
#include <velaforge/base/VfString.h>

#include <OpenThreads/ReentrantMutex>
#include <osg/ref_ptr>
#include <osgDB/DynamicLibrary>

#include <memory>
#include <string>
#include <vector>

namespace vfApplication {

class Module;
class ModuleInterface;

/// Body of ModuleRegistry, and the table of the producers that plug-ins register:
///
///     static const vfApplication::ModuleRegistryPrivate::Proxy proxy(new MeasuringProducer);
///
/// Nothing reads that table; it keeps the producers for as long as the registry is there.
class VFAPPLICATION_EXPORT ModuleRegistryPrivate
    : public vfBase::Registry<
          ModuleRegistryPrivate,
          vfBase::RegistryObjectProducerInterface<ModuleInterface, const char*, vfBase::NilType>, std::string>
{
public:
    using Producer = vfBase::RegistryObjectProducerInterface<ModuleInterface, const char*, vfBase::NilType>;
    using Base = vfBase::Registry<ModuleRegistryPrivate, Producer, std::string>;

    /// What a plug-in makes a static object of.
    class VFAPPLICATION_EXPORT Proxy : public Base::Proxy
    {
    public:
        /// See Registry::Proxy. What counts the holders of the producer is this library's, so that the entry stays sound
        /// when the plug-in is closed.
        explicit Proxy(Producer* producer);
    };

    /// Looks for modules.
    ///
    /// Each file of the directory whose name holds "vf_" and whose extension is that of modules is one; its name is what
    /// stands between "vf_" and the extension. It is opened unless ModuleSettings says that it is disabled. Then the
    /// list of ModuleSettings is emptied, whatever was found. Without the directory nothing happens at all.
    ModuleRegistryPrivate();

    /// Closes the libraries, then lets the modules go, and the producers last: what a module or a producer needs to be
    /// destroyed must not lie in a library that only this registry keeps open.
    ~ModuleRegistryPrivate() override;

    void registryHook() override {}

    /// Opens a library, once. A library that throws or crashes while it is loaded is found out in a child process first,
    /// which loads it too; one that takes longer than ten seconds counts as such.
    /// @return false, and nothing is said, if it cannot be opened
    bool loadModule(const std::string& path);

    OpenThreads::ReentrantMutex mutex; ///< around the table of modules and the libraries
    bool openingLibrary = false;       ///< true while a library is being loaded
    vfBase::Map<vfBase::VfString, vfBase::VfString> moduleInfoMap;          ///< module name to file
    vfBase::Map<vfBase::VfString, std::shared_ptr<Module>> activeModuleMap; ///< id to module
    std::vector<osg::ref_ptr<osgDB::DynamicLibrary>> libraries;             ///< in the order of opening

private:
    friend class ModuleRegistry;
    friend Base;

    /// @param erase  lets go of the object for good
    /// @return the one object; null once it was erased
    static ModuleRegistryPrivate* instance(bool erase);

    void discoverModules(const std::string& directory);
    bool isOpen(const std::string& path) const;
};

} // namespace vfApplication
