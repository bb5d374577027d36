// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/InstalledFile.h>

#include <velaforge/base/LibraryFolder.h>

namespace vfFormats {

std::string installedFile(const std::string& name)
{
    return vfBase::libraryFolder(&installedFile) + "/velaforge/" + name;
}

std::string assimpLibrary()
{
    return installedFile("velaforge_assimp.so");
}

} // namespace vfFormats
