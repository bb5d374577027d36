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
/// This library does not read that table: it only owns the producers until the registry is destroyed.
class VFAPPLICATION_EXPORT ModuleRegistryPrivate
    : public vfBase::Registry<
          ModuleRegistryPrivate,
          vfBase::RegistryObjectProducerInterface<ModuleInterface, const char*, vfBase::NilType>, std::string>
{
public:
    /// The interface of a producer of modules.
    using Producer = vfBase::RegistryObjectProducerInterface<ModuleInterface, const char*, vfBase::NilType>;

    /// The table of producers.
    using Base = vfBase::Registry<ModuleRegistryPrivate, Producer, std::string>;

    /// Registers a producer when it is constructed. A plug-in defines a static object of this class.
    class VFAPPLICATION_EXPORT Proxy : public Base::Proxy
    {
    public:
        /// Registers @p producer, see Registry::Proxy. The code that counts references on the producer is in
        /// this library, so that the entry stays valid when the plug-in is closed.
        explicit Proxy(Producer* producer);
    };

    /// Searches the module directory and opens the modules found.
    ///
    /// A file is a module if its name contains "vf_" and it has the extension of modules. The module name is
    /// the part between "vf_" and the extension. Opens the file unless ModuleSettings has the module as
    /// disabled. Then clears the list of ModuleSettings, whatever was found. Does nothing if the directory
    /// does not exist.
    ModuleRegistryPrivate();

    /// Closes the libraries, then releases the modules, then the producers. The code that destroys a module
    /// or a producer must therefore not be in a library that only this registry keeps open.
    ~ModuleRegistryPrivate() override;

    /// Does nothing.
    void registryHook() override {}

    /// Opens the library @p path, unless it is open. First loads it in a child process, so that a library
    /// that throws or crashes while it is loaded, or takes longer than ten seconds, does not end this one.
    /// @return false, without a message, if it cannot be opened
    bool loadModule(const std::string& path);

    OpenThreads::ReentrantMutex mutex;                             ///< guards activeModuleMap and libraries
    bool openingLibrary = false;                                   ///< true while a library is loaded
    vfBase::Map<vfBase::VfString, vfBase::VfString> moduleInfoMap; ///< module name to file
    vfBase::Map<vfBase::VfString, std::shared_ptr<Module>> activeModuleMap; ///< id to module
    std::vector<osg::ref_ptr<osgDB::DynamicLibrary>> libraries;             ///< in the order of opening

private:
    friend class ModuleRegistry;
    friend Base;

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released
    static ModuleRegistryPrivate* instance(bool erase);

    void discoverModules(const std::string& directory);
    bool isOpen(const std::string& path) const;
};

} // namespace vfApplication
