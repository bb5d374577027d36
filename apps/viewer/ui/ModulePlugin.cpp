// SPDX-License-Identifier: MIT
#include "ui/ModulePlugin.h"

#include "ui/WindowSide.h"

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

/// Opens a library of the viewer's own for good. @return the entry of that name, null with the reason
void* findEntry(const std::string& library, const char* entry, std::string& reason)
{
    const std::string directory = moduleDirectory();
    if (directory.empty()) {
        reason = "the directory of the program cannot be told";
        return nullptr;
    }
    const std::string path = directory + "/" + library + ".so";
    void* opened = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!opened) {
        reason = dlerror();
        return nullptr;
    }
    void* found = dlsym(opened, entry);
    if (!found) {
        reason = path + ": no module of the viewer";
        dlclose(opened);
    }
    return found;
}

} // namespace

bool addModuleFromLibrary(const std::string& name, std::string& reason)
{
    auto* create = reinterpret_cast<CreateModule*>(findEntry(name, "vfViewerCreateModule", reason));
    vfApplication::Module* module = create ? create() : nullptr;
    if (!module)
        return false;
    vfApplication::ModuleRegistry::instance(false)->addModule(module);
    return true;
}

const WindowSide* openWindowSide(std::string& reason)
{
    auto* get = reinterpret_cast<GetWindowSide*>(findEntry("vfviewer_qt", "vfViewerWindowSide", reason));
    return get ? get() : nullptr;
}

} // namespace vfViewer
