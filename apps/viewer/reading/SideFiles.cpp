// SPDX-License-Identifier: MIT
#include "reading/SideFiles.h"

#include <algorithm>
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

thread_local const void* ruleInForce = nullptr;

/// @return the path without links; empty when there is no such file
std::string realPath(const std::string& path)
{
    char resolved[PATH_MAX];
    return path.find('\0') == std::string::npos && realpath(path.c_str(), resolved) ? resolved
                                                                                    : std::string();
}

/// @return whether a folder is of the one user that another one is of, and no place where everybody puts files
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

/// @return the last names of a path, as many as wanted; empty when it has fewer
std::string lastNames(const std::string& path, int wanted)
{
    std::size_t slash = path.size();
    for (int i = 0; i < wanted; ++i) {
        if (slash == 0 || slash == std::string::npos)
            return std::string();
        slash = path.rfind('/', slash - 1);
    }
    return slash == std::string::npos ? path : path.substr(slash + 1);
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
    if (name.empty())
        return std::string();
    static const Rule none;
    const Rule& rule = isInForce() ? *static_cast<const Rule*>(ruleInForce) : none;
    std::string path = name;
    std::replace(path.begin(), path.end(), '\\', '/');
    const bool isAbsolute = path.front() == '/';
    const auto firstOf = [](const std::vector<std::string>& folders, const std::string& wanted) {
        for (const std::string& folder : folders) {
            if (!wanted.empty() && isThere(folder + "/" + wanted))
                return folder + "/" + wanted;
        }
        return std::string();
    };
    if (isAbsolute && isThere(path))
        return path;
    std::string found = isAbsolute ? std::string() : firstOf(directories, path);
    if (found.empty() && !isAbsolute)
        found = firstOf(rule.folders, path);
    for (const int names : {2, 1}) {
        if (found.empty())
            found = firstOf(rule.folders, lastNames(path, names));
        if (found.empty())
            found = firstOf(directories, lastNames(path, names));
    }
    for (const std::vector<std::string>* folders : {&rule.folders, &rule.above}) {
        for (const std::string& folder : *folders) {
            if (found.empty())
                found = firstOf(foldersIn(folder), lastNames(path, 1));
        }
    }
    return found;
}

} // namespace vfViewer
