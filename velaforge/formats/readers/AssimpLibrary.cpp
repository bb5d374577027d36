// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/AssimpLibrary.h>

#include <velaforge/formats/internal/InstalledFile.h>

#include <dlfcn.h>

namespace vfFormats {

namespace {

using Read = void(const char* path, ReadOutcome* outcome);

Read* load(std::string& reason)
{
    void* library = dlopen(assimpLibrary().c_str(), RTLD_NOW | RTLD_LOCAL);
    auto* read = library ? reinterpret_cast<Read*>(dlsym(library, "velaforgeRead")) : nullptr;
    if (!read)
        reason = "the library that reads this format cannot be loaded";
    return read;
}

} // namespace

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

} // namespace vfFormats
