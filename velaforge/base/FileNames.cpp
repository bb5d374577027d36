// SPDX-License-Identifier: MIT
#include <velaforge/base/FileNames.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace vfBase {

namespace {

/// Returns whether a text begins with a scheme and "://".
bool hasScheme(const std::string& text)
{
    const std::size_t end = text.find("://");
    if (end == std::string::npos || end == 0 || !std::isalpha(static_cast<unsigned char>(text[0])))
        return false;
    return std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end),
                       [](unsigned char letter) {
                           return std::isalnum(letter) || letter == '+' || letter == '-' || letter == '.';
                       });
}

} // namespace

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

VfString absolutePath(const VfString& path)
{
    if (path.empty() || hasScheme(path.str()))
        return path;
    std::error_code problem;
    const std::filesystem::path absolute = std::filesystem::absolute(path.str(), problem);
    return problem ? path : VfString(absolute.lexically_normal().string());
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
