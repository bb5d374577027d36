// SPDX-License-Identifier: MIT
#include "reading/AssimpLibrary.h"

#include <velaforge/base/LibraryFolder.h>

#include <dlfcn.h>
#include <unistd.h>

namespace vfViewer {

namespace {

std::string libraryPath()
{
    return vfBase::libraryFolder(&hasAssimp) + "/vfviewer_assimp.so";
}

using Read = void(const char* path, ReadOutcome* outcome);

Read* load(std::string& reason)
{
    void* library = dlopen(libraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
    auto* read = library ? reinterpret_cast<Read*>(dlsym(library, "vfviewerRead")) : nullptr;
    if (!read)
        reason = "the library that reads this format cannot be loaded";
    return read;
}

} // namespace

bool hasAssimp()
{
    return access(libraryPath().c_str(), R_OK) == 0;
}

void loadAssimp()
{
    std::string ignored;
    load(ignored);
}

ReadOutcome readWithAssimpLibrary(const std::string& path)
{
    ReadOutcome outcome;
    if (Read* read = load(outcome.reason))
        read(path.c_str(), &outcome);
    return outcome;
}

} // namespace vfViewer
