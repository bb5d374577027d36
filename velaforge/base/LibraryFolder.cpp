// SPDX-License-Identifier: MIT
#include <velaforge/base/LibraryFolder.h>

#include <velaforge/base/FileNames.h>

#include <climits>
#include <cstdlib>

#include <dlfcn.h>

namespace vfBase {

VfString libraryFolder(const void* address)
{
    Dl_info info{};
    char path[PATH_MAX];
    if (!dladdr(address, &info) || !info.dli_fname || !realpath(info.dli_fname, path))
        return VfString();
    return getFilePath(path);
}

} // namespace vfBase
