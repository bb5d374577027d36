// SPDX-License-Identifier: MIT
#include <velaforge/modules/ModuleRegistryPrivate.h>

#include <velaforge/base/ChildProcess.h>
#include <velaforge/base/ProcessSingleton.h>
#include <velaforge/base/Version.h>
#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleSettings.h>

#include <OpenThreads/ScopedLock>
#include <osgDB/FileNameUtils>
#include <osgDB/FileUtils>

#include <algorithm>

// The extension of modules, with its dot. No file has this one, and so none is opened: modules come to the
// registry by addModule. Tests build this file with another value.
#ifndef VF_MODULE_EXTENSION
#define VF_MODULE_EXTENSION "VF_MODULE_EXTENSION"
#endif

namespace vfApplication {

namespace {

using Lock = OpenThreads::ScopedLock<OpenThreads::ReentrantMutex>;

constexpr unsigned int secondsToLoad = 10;

/// An exception or a crash while a library is loaded ends the process, so it is tried in another one.
bool loadsWithoutHarm(const std::string& path)
{
    const auto load = [&path] { return osgDB::DynamicLibrary::loadLibrary(path) != nullptr; };
    return vfBase::tryInChild(load, secondsToLoad) == vfBase::ChildResult::Succeeded;
}

/// Entry by entry, since each removal undoes its position.
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
        osgDB::findLibraryFile(std::string("vfModules-") + vfBase::getVersion(), osgDB::CASE_SENSITIVE);
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
        const std::size_t found = entry.find(mark); // anywhere, not only in front
        if (found == std::string::npos)
            continue;
        if (osgDB::getFileExtensionIncludingDot(entry) != moduleExtension)
            continue;
        const std::string name = osgDB::getNameLessExtension(entry).substr(found + mark.size());
        const std::string path = std::string(directory).append("/").append(entry);
        moduleInfoMap[name] = path;
        // What cannot be opened stays listed, and nothing is said.
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
    // Without the lock: the child would inherit it locked, and code of the library may call the registry there.
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
