// SPDX-License-Identifier: MIT
#include "reading/SideFiles.h"

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace fs = std::filesystem;

struct SideFiles::Rule
{
    std::string model;                ///< its real path
    std::vector<std::string> folders; ///< of the model, real paths
    std::vector<std::string> above;   ///< those whose other folders are admitted
};

namespace {

/// Folders beside and below the model in which a file is looked for.
constexpr std::size_t mostFolders = 200;

/// Folders of more entries are not searched for other capitals.
constexpr int mostEntries = 100000;

/// Of a path from another computer only so many of the last folders are looked for.
constexpr std::size_t mostParts = 16;

thread_local const void* ruleInForce = nullptr;

/// @return the path without links; empty when there is no such file
std::string realPath(const std::string& path)
{
    char resolved[PATH_MAX];
    return path.find('\0') == std::string::npos && realpath(path.c_str(), resolved) ? resolved
                                                                                    : std::string();
}

/// @return whether a folder has the same owner as another one, and not all users may write to it
bool isOfSameUser(const std::string& folder, const std::string& other)
{
    struct stat first;
    struct stat second;
    return stat(folder.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
           first.st_uid == second.st_uid && !(first.st_mode & S_IWOTH);
}

/// @return whether a real path lies below a real folder, and nothing on the way is hidden
bool isBelow(const std::string& path, const std::string& folder)
{
    return path.size() > folder.size() + 1 && path.compare(0, folder.size(), folder) == 0 &&
           path[folder.size()] == '/' && path.find("/.", folder.size()) == std::string::npos;
}

bool isThere(const std::string& path)
{
    return access(path.c_str(), F_OK) == 0 && SideFiles::isAdmitted(path);
}

/// @return the folders in another one that are not hidden, in the order of their names
std::vector<std::string> foldersIn(const std::string& folder)
{
    std::vector<std::string> found;
    std::error_code problem;
    for (fs::directory_iterator entry(folder, problem), end; !problem && entry != end;
         entry.increment(problem)) {
        std::error_code unknown;
        if (entry->path().filename().string().front() != '.' && entry->is_directory(unknown))
            found.push_back(entry->path().string());
        if (found.size() == mostFolders)
            break;
    }
    std::sort(found.begin(), found.end());
    return found;
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
std::string findEntry(const std::string& folder, const std::string& name)
{
    const std::string asNamed = folder + "/" + name;
    if (access(asNamed.c_str(), F_OK) == 0)
        return asNamed;
    const std::string wanted = osgDB::convertToLowerCase(name);
    std::error_code problem;
    fs::directory_iterator entries(folder, problem);
    for (int i = 0; !problem && entries != fs::directory_iterator() && i < mostEntries; ++i) {
        const std::string entry = entries->path().filename().string();
        if (osgDB::convertToLowerCase(entry) == wanted)
            return folder + "/" + entry;
        entries.increment(problem);
    }
    return std::string();
}

/// @return the admitted file that the parts from @p first on lead to; empty when there is none
std::string follow(std::string folder, const std::vector<std::string>& parts, std::size_t first)
{
    for (std::size_t i = first; i < parts.size() && !folder.empty(); ++i)
        folder = findEntry(folder, parts[i]);
    return !folder.empty() && isThere(folder) ? folder : std::string();
}

/// @param folders  those in which the file may lie
/// @param around   those whose folders are searched after them
std::string findIn(const std::vector<std::string>& folders, const std::vector<std::string>& around,
                   const std::string& path)
{
    const bool isAbsolute = path.front() == '/';
    if (isAbsolute && isThere(path))
        return path;
    for (const std::string& folder : folders) {
        if (!isAbsolute && isThere(folder + "/" + path))
            return folder + "/" + path;
    }
    const std::vector<std::string> parts = partsOf(path);
    if (parts.empty())
        return std::string();
    // The model may have been moved with the folders beside it.
    const std::size_t last = parts.size() - 1;
    for (std::size_t first = last > mostParts ? last - mostParts : 0; first <= last; ++first) {
        for (const std::string& folder : folders) {
            const std::string found = follow(folder, parts, first);
            if (!found.empty())
                return found;
        }
    }
    for (const std::string& folder : around) {
        for (const std::string& place : foldersIn(folder)) {
            const std::string found = follow(place, parts, last);
            if (!found.empty())
                return found;
        }
    }
    return std::string();
}

} // namespace

SideFiles::SideFiles(const std::string& model)
    : m_rule(nullptr), m_former(static_cast<const Rule*>(ruleInForce))
{
    auto* rule = new Rule;
    m_rule = rule;
    rule->model = realPath(model);
    const std::size_t slash = model.rfind('/');
    for (const std::string& folder : {realPath(slash == std::string::npos ? "." : model.substr(0, slash + 1)),
                                      rule->model.substr(0, rule->model.rfind('/'))})
    {
        if (folder.empty() || std::count(rule->folders.begin(), rule->folders.end(), folder) > 0)
            continue;
        rule->folders.push_back(folder);
        const std::string above = folder.substr(0, folder.rfind('/'));
        if (!above.empty() && isOfSameUser(above, folder))
            rule->above.push_back(above);
    }
    ruleInForce = rule;
}

SideFiles::~SideFiles()
{
    ruleInForce = m_former;
    delete m_rule;
}

bool SideFiles::isInForce()
{
    return ruleInForce != nullptr;
}

bool SideFiles::isAdmitted(const std::string& path)
{
    if (!isInForce())
        return true;
    const Rule& rule = *static_cast<const Rule*>(ruleInForce);
    const std::string real = realPath(path);
    struct stat status;
    if (real.empty() || stat(real.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const auto holds = [&real](const std::string& folder) { return isBelow(real, folder); };
    return real == rule.model || std::any_of(rule.folders.begin(), rule.folders.end(), holds) ||
           std::any_of(rule.above.begin(), rule.above.end(), holds);
}

std::string SideFiles::find(const std::string& name, const std::vector<std::string>& directories)
{
    const std::string tidy = tidied(name);
    if (tidy.empty() || tidy.find('\0') != std::string::npos)
        return std::string();
    std::vector<std::string> folders;
    for (const std::string& directory : directories)
        folders.push_back(directory.empty() ? "." : directory);
    std::vector<std::string> around;
    if (isInForce()) {
        const Rule& rule = *static_cast<const Rule*>(ruleInForce);
        folders.insert(folders.end(), rule.folders.begin(), rule.folders.end());
        around = rule.above;
    }
    around.insert(around.begin(), folders.begin(), folders.end());
    const std::string found = findIn(folders, around, tidy);
    const std::string plain = withoutPercents(tidy);
    return found.empty() && plain != tidy && plain.find('\0') == std::string::npos
               ? findIn(folders, around, plain)
               : found;
}

} // namespace vfViewer
