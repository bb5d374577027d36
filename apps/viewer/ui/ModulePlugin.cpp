// SPDX-License-Identifier: MIT
#include "ui/ModulePlugin.h"

#include <velaforge/modules/Module.h>
#include <velaforge/modules/ModuleRegistry.h>

#include <osgDB/FileNameUtils>

#include <climits>
#include <cstdlib>

#include <dlfcn.h>

namespace vfViewer {

namespace {

/// Beside the program, wherever the whole of it was put.
std::string moduleDirectory()
{
    char path[PATH_MAX];
    if (!realpath("/proc/self/exe", path))
        return std::string();
    return osgDB::getFilePath(path) + "/" VFVIEWER_MODULE_DIR;
}

} // namespace

bool addModuleFromLibrary(const std::string& name, std::string& reason)
{
    const std::string path = moduleDirectory() + "/" + name + ".so";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        reason = dlerror();
        return false;
    }
    auto* create = reinterpret_cast<CreateModule*>(dlsym(library, "vfViewerCreateModule"));
    vfApplication::Module* module = create ? create() : nullptr;
    if (!module) {
        reason = path + ": no module of the viewer";
        return false;
    }
    vfApplication::ModuleRegistry::instance(false)->addModule(module);
    return true;
}

} // namespace vfViewer
