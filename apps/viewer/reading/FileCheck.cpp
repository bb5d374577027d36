// SPDX-License-Identifier: MIT
#include "reading/FileCheck.h"

#include "reading/MappedFile.h"
#include "reading/StlKind.h"

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <string_view>
#include <vector>

namespace vfViewer {

namespace {

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

std::uint32_t littleEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i - 1]);
    return value;
}

std::uint32_t bigEndian(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

/// Text is shown as far as it goes.
bool isCutOffStl(std::string_view file)
{
    if (isStlText(file))
        return false;
    return file.size() < 84 || file.size() - 84 < static_cast<std::uint64_t>(littleEndian(file, 80)) * 50;
}

/// The first chunk holds all others and knows its length.
bool isCutOff3ds(std::string_view file)
{
    return file.size() < 6 || littleEndian(file, 2) > file.size();
}

bool isCutOffLwo(std::string_view file)
{
    return file.size() < 8 || (beginsWith(file, "FORM") && bigEndian(file, 4) > file.size() - 8);
}

/// Everything that is opened by a brace must be closed; braces in quoted text do not count.
bool isCutOffInBraces(std::string_view file)
{
    long depth = 0;
    bool isQuoted = false;
    for (std::size_t i = 0; i < file.size(); ++i) {
        const char c = file[i];
        if (isQuoted) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                isQuoted = false;
        } else if (c == '"') {
            isQuoted = true;
        } else if (c == '{') {
            ++depth;
        } else if (c == '}') {
            --depth;
        }
    }
    return depth > 0 || isQuoted;
}

/// Calls @p use for each line, without its line end. A last line without one counts too.
template <class Use>
void forEachLine(std::string_view text, Use use)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        use(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::uint64_t numberBehind(std::string_view line, std::size_t at)
{
    std::uint64_t number = 0;
    for (std::size_t i = line.find_first_not_of(' ', at); i < line.size() && line[i] >= '0' && line[i] <= '9';
         ++i)
        number = std::min<std::uint64_t>(number * 10 + static_cast<std::uint64_t>(line[i] - '0'), 1ull << 60);
    return number;
}

/// Objects announce their surfaces, and every object ends with the number of its children.
bool isCutOffAc(std::string_view file)
{
    std::uint64_t announced = 0;
    std::uint64_t found = 0;
    std::uint64_t objects = 0;
    std::uint64_t children = 0;
    forEachLine(file, [&](std::string_view line) {
        if (beginsWith(line, "numsurf"))
            announced += numberBehind(line, 7);
        else if (beginsWith(line, "SURF"))
            ++found;
        else if (beginsWith(line, "OBJECT"))
            ++objects;
        else if (beginsWith(line, "kids"))
            ++children;
    });
    return found < announced || children < objects;
}

/// The last statement must have as many parts as its kind needs.
bool isCutOffObj(std::string_view file)
{
    if (file.back() == '\n')
        return false;
    const std::size_t begin = file.rfind('\n');
    std::istringstream words{std::string(file.substr(begin == std::string_view::npos ? 0 : begin + 1))};
    std::string kind;
    words >> kind;
    std::size_t count = 0;
    bool endsInSlash = false;
    for (std::string word; words >> word; ++count)
        endsInSlash = word.back() == '/' || word.back() == '-' || word.back() == '.';
    static const std::map<std::string, std::size_t> needed = {
        {"v", 3}, {"vn", 3}, {"vt", 1}, {"f", 3}, {"l", 2}};
    const auto found = needed.find(kind);
    return found != needed.end() && (count < found->second || endsInSlash);
}

} // namespace

bool isCutOff(const std::string& path)
{
    using Check = bool (*)(std::string_view);
    static const std::map<std::string, Check> checks = {
        {"stl", isCutOffStl},         {"3ds", isCutOff3ds},      {"lwo", isCutOffLwo},
        {"ac", isCutOffAc},           {"obj", isCutOffObj},      {"x", isCutOffInBraces},
        {"osgt", isCutOffInBraces},   {"osg", isCutOffInBraces}, {"ase", isCutOffInBraces},
        {"md5mesh", isCutOffInBraces}};
    const auto check = checks.find(osgDB::getLowerCaseFileExtension(path));
    if (check == checks.end())
        return false;
    const MappedFile file(path, MappedFile::Wanted::Places);
    if (file.text().empty())
        return false;
    // A binary .x file has no braces, and says at its beginning that it is one.
    if (check->first == "x" && file.text().substr(0, 16).find("txt") == std::string_view::npos)
        return false;
    return check->second(file.text());
}

} // namespace vfViewer
