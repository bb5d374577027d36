// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleRegistryPrivate.h>

#include <velaforge/application/Application.h>
#include <velaforge/base/ChildProcess.h>
#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleSettings.h>

#include <OpenThreads/ScopedLock>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <algorithm>

// The extension of modules, including the dot. No file has this value as its extension, so discovery opens
// none and modules are added by addModule only. Tests compile this file with another value.
#ifndef VF_MODULE_EXTENSION
#define VF_MODULE_EXTENSION "VF_MODULE_EXTENSION"
#endif

namespace vfApplication {

namespace {

using Lock = OpenThreads::ScopedLock<OpenThreads::ReentrantMutex>;

constexpr unsigned int secondsToLoad = 10;

/// Loads the library in a child process: an exception or a crash while it is loaded would end this one.
/// @return true if it could be loaded in time
bool loadsWithoutHarm(const std::string& path)
{
    const auto load = [&path] { return osgDB::DynamicLibrary::loadLibrary(path) != nullptr; };
    return vfBase::tryInChild(load, secondsToLoad) == vfBase::ChildResult::Succeeded;
}

/// Removes all entries. Takes the next position before each removal, which invalidates the current one.
void forgetModules(ModuleSettings& settings)
{
    const std::map<std::string, bool>& list = settings.getModuleList();
    for (auto next = list.begin(); next != list.end();) {
        const auto current = next++;
        settings.removeModule(current->first);
    }
}

} // namespace

ModuleRegistryPrivate::ModuleRegistryPrivate()
{
    const std::string directory =
        osgDB::findLibraryFile(std::string("vfModules-") + getVersion(), osgDB::CASE_SENSITIVE);
    if (directory.empty())
        return;
    discoverModules(directory);
    forgetModules(*ModuleSettings::instance(false));
}

ModuleRegistryPrivate::~ModuleRegistryPrivate()
{
    const Lock lock(mutex);
    for (osg::ref_ptr<osgDB::DynamicLibrary>& library : libraries)
        library = nullptr;
    libraries.clear();
}

ModuleRegistryPrivate::Proxy::Proxy(Producer* producer) : Base::Proxy(producer) {}

ModuleRegistryPrivate* ModuleRegistryPrivate::instance(bool erase)
{
    return vfBase::processSingleton(
        erase, [] { return std::shared_ptr<ModuleRegistryPrivate>(new ModuleRegistryPrivate); });
}

void ModuleRegistryPrivate::discoverModules(const std::string& directory)
{
    const std::string moduleExtension = VF_MODULE_EXTENSION;
    const std::string mark = "vf_";
    ModuleSettings& settings = *ModuleSettings::instance(false);
    for (const std::string& entry : osgDB::getDirectoryContents(directory)) {
        // By contract the mark may be anywhere in the name.
        const std::size_t found = entry.find(mark);
        if (found == std::string::npos)
            continue;
        if (osgDB::getFileExtensionIncludingDot(entry) != moduleExtension)
            continue;
        const std::string name = osgDB::getNameLessExtension(entry).substr(found + mark.size());
        const std::string path = std::string(directory).append("/").append(entry);
        moduleInfoMap[name] = path;
        // A file that cannot be opened stays listed, without a message.
        if (settings.isValidModule(name)) {
            if (settings.getModuleStateSettings(name))
                loadModule(path);
        } else {
            settings.setModuleStateSettings(name, true);
            loadModule(path);
        }
    }
}

bool ModuleRegistryPrivate::isOpen(const std::string& path) const
{
    return std::any_of(libraries.begin(), libraries.end(),
                       [&path](const auto& library) { return library->getName() == path; });
}

bool ModuleRegistryPrivate::loadModule(const std::string& path)
{
    {
        const Lock lock(mutex);
        if (isOpen(path))
            return true;
    }
    // Without the lock: in the child it would stay locked, and code of the library that calls the registry
    // would block.
    if (!loadsWithoutHarm(path))
        return false;
    const Lock lock(mutex);
    if (isOpen(path))
        return true;
    openingLibrary = true;
    const osg::ref_ptr<osgDB::DynamicLibrary> library = osgDB::DynamicLibrary::loadLibrary(path);
    openingLibrary = false;
    if (!library)
        return false;
    libraries.push_back(library);
    return true;
}

} // namespace vfApplication
