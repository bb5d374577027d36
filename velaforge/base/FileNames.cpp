// SPDX-License-Identifier: MIT
#include <velaforge/base/FileNames.h>

#include <osgDB/FileNameUtils>

#include <filesystem>

namespace vfBase {

VfString getFilePath(const VfString& path)
{
    return osgDB::getFilePath(path);
}

VfString getSimpleFileName(const VfString& path)
{
    return osgDB::getSimpleFileName(path);
}

VfString getNameLessExtension(const VfString& path)
{
    return osgDB::getNameLessExtension(path);
}

VfString makePathComponent(const VfString& name)
{
    std::string component = name.str();
    for (char& c : component) {
        if (c == '/' || c == '\0')
            c = '_';
    }
    return component == "." || component == ".." ? std::string(component.size(), '_') : component;
}

bool directoryExists(const VfString& path)
{
    if (path.empty() || path.str().find('\0') != std::string::npos)
        return false;
    std::error_code ignored;
    return std::filesystem::is_directory(path.str(), ignored);
}

} // namespace vfBase
