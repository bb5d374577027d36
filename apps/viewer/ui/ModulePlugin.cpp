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

/// @return the directory beside the program, wherever the whole of it was put; empty when that cannot be told
std::string moduleDirectory()
{
    char path[PATH_MAX];
    return realpath("/proc/self/exe", path) ? osgDB::getFilePath(path) + "/" VFVIEWER_MODULE_DIR
                                            : std::string();
}

} // namespace

bool addModuleFromLibrary(const std::string& name, std::string& reason)
{
    const std::string directory = moduleDirectory();
    if (directory.empty()) {
        reason = "the directory of the program cannot be told";
        return false;
    }
    const std::string path = directory + "/" + name + ".so";
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        reason = dlerror();
        return false;
    }
    auto* create = reinterpret_cast<CreateModule*>(dlsym(library, "vfViewerCreateModule"));
    vfApplication::Module* module = create ? create() : nullptr;
    if (!module) {
        reason = path + ": no module of the viewer";
        dlclose(library);
        return false;
    }
    vfApplication::ModuleRegistry::instance(false)->addModule(module);
    return true;
}

} // namespace vfViewer
