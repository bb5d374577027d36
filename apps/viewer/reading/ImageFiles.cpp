// SPDX-License-Identifier: MIT
#include "reading/ImageFiles.h"

#include <osgDB/FileNameUtils>
#include <osgDB/ReadFile>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace vfViewer {

namespace {

namespace fs = std::filesystem;

/// Folders of more entries are not searched for other capitals.
constexpr int mostEntries = 100000;

bool isFile(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

int digitOf(char letter)
{
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// @return the text with each "%20" and the like replaced by the byte that it stands for
std::string withoutPercents(const std::string& text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isCode =
            text[i] == '%' && i + 2 < text.size() && digitOf(text[i + 1]) >= 0 && digitOf(text[i + 2]) >= 0;
        plain += isCode ? static_cast<char>(digitOf(text[i + 1]) * 16 + digitOf(text[i + 2])) : text[i];
        i += isCode ? 2 : 0;
    }
    return plain;
}

/// @return the name without quotation marks and spaces around it, with slashes
std::string tidied(std::string name)
{
    std::replace(name.begin(), name.end(), '\\', '/');
    const auto isMargin = [](char letter) {
        return letter == '"' || letter == '\'' || std::isspace(static_cast<unsigned char>(letter));
    };
    while (!name.empty() && isMargin(name.back()))
        name.pop_back();
    while (!name.empty() && isMargin(name.front()))
        name.erase(0, 1);
    return name;
}

/// @return the parts of a path, without drive letters and without "." and ".."
std::vector<std::string> partsOf(const std::string& path)
{
    std::vector<std::string> parts;
    for (const fs::path& part : fs::path(path)) {
        const std::string text = part.string();
        const bool isDrive = text.size() == 2 && text[1] == ':';
        if (!text.empty() && text != "/" && text != "." && text != ".." && !isDrive)
            parts.push_back(text);
    }
    return parts;
}

/// @return the entry of a folder with that name in whatever capitals; empty when there is none
fs::path findEntry(const fs::path& folder, const std::string& name)
{
    std::error_code problem;
    if (fs::exists(folder / name, problem))
        return folder / name;
    const std::string wanted = osgDB::convertToLowerCase(name);
    fs::directory_iterator entries(folder, problem);
    for (int i = 0; !problem && entries != fs::directory_iterator() && i < mostEntries; ++i) {
        if (osgDB::convertToLowerCase(entries->path().filename().string()) == wanted)
            return entries->path();
        entries.increment(problem);
    }
    return {};
}

/// @return the file that the parts from @p first on lead to; empty when there is none
fs::path follow(fs::path folder, const std::vector<std::string>& parts, std::size_t first)
{
    for (std::size_t i = first; i < parts.size() && !folder.empty(); ++i)
        folder = findEntry(folder, parts[i]);
    return isFile(folder) ? folder : fs::path();
}

std::string find(const std::string& name, const fs::path& folder)
{
    const fs::path asNamed = fs::path(name).is_absolute() ? fs::path(name) : folder / name;
    if (isFile(asNamed))
        return asNamed.string();
    const std::vector<std::string> parts = partsOf(name);
    if (parts.empty())
        return {};
    // The model may have been moved with the folders beside it.
    for (std::size_t first = 0; first < parts.size(); ++first) {
        const fs::path found = follow(folder, parts, first);
        if (!found.empty())
            return found.string();
    }
    for (const char* usual : {"textures", "texture", "tex", "maps", "images"}) {
        const fs::path place = findEntry(folder, usual);
        const fs::path found = place.empty() ? fs::path() : follow(place, parts, parts.size() - 1);
        if (!found.empty())
            return found.string();
    }
    return {};
}

} // namespace

std::string findSideFile(const std::string& name, const std::string& directory)
{
    const std::string tidy = tidied(name);
    if (tidy.empty())
        return {};
    const fs::path folder = directory.empty() ? fs::path(".") : fs::path(directory);
    const std::string found = find(tidy, folder);
    const std::string plain = withoutPercents(tidy);
    return found.empty() && plain != tidy ? find(plain, folder) : found;
}

osg::ref_ptr<osg::Image> readImageFile(const std::string& name, const std::string& directory)
{
    const std::string tidy = tidied(name);
    if (tidy.empty())
        return nullptr;
    const std::string found = findSideFile(name, directory);
    if (!found.empty())
        return osgDB::readRefImageFile(found);
    return osgDB::readRefImageFile(osgDB::isAbsolutePath(tidy) ? tidy : directory + "/" + tidy);
}

std::string imageFormatOf(const std::string& bytes)
{
    using namespace std::string_literals;
    static const std::vector<std::pair<std::string, std::string>> beginnings = {
        {"\x89PNG"s, "png"}, {"\xff\xd8\xff"s, "jpg"}, {"GIF8"s, "gif"},
        {"BM"s, "bmp"},      {"II*\0"s, "tif"},        {"MM\0*"s, "tif"},
        {"DDS "s, "dds"},    {"\x01\xda"s, "sgi"},     {"P6"s, "ppm"}};
    for (const auto& [beginning, format] : beginnings) {
        if (bytes.compare(0, beginning.size(), beginning) == 0)
            return format;
    }
    return {};
}

} // namespace vfViewer
