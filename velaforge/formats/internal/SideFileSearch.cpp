// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/SideFileSearch.h>

#include <velaforge/formats/Format.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <deque>
#include <memory>
#include <set>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>

namespace vfFormats {

namespace {

// A model may lie in a folder beneath which there is everything that its owner has.
constexpr std::size_t mostFolders = 200;
constexpr std::size_t mostEntries = 20000;
constexpr int deepest = 4;       // folders below that of the model
constexpr int deepestBeside = 1; // folders below those beside it

/// Returns whether a folder has the same owner as another one, and not all users may write to it.
bool isOfSameUser(const std::string& folder, const std::string& other)
{
    struct stat first;
    struct stat second;
    return stat(folder.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
           first.st_uid == second.st_uid && !(first.st_mode & S_IWOTH);
}

/// Returns whether a real path lies below a real folder, and nothing on the way is hidden.
bool isBelow(const std::string& path, const std::string& folder)
{
    return path.size() > folder.size() + 1 && path.compare(0, folder.size(), folder) == 0 &&
           path[folder.size()] == '/' && path.find("/.", folder.size()) == std::string::npos;
}

bool mayBeNamed(const std::string& name, const Format& model)
{
    const std::string extension = osgDB::getLowerCaseFileExtension(name);
    return formatNamed(extension) || std::find(model.sideExtensions.begin(), model.sideExtensions.end(),
                                               extension) != model.sideExtensions.end();
}

/// Looks through folders, the nearest first.
class Search
{
public:
    Search(const ModelPlaces& places, const Format& model) : m_places(places), m_model(model) {}

    std::vector<std::string> run()
    {
        for (const std::string& folder : m_places.folders)
            add(folder, deepest);
        for (const std::string& folder : m_places.above)
            add(folder, deepestBeside + 1);
        for (std::size_t looked = 0; !m_waiting.empty() && looked < mostFolders; ++looked) {
            const auto [folder, levels] = m_waiting.front();
            m_waiting.pop_front();
            lookInto(folder, levels);
        }
        return std::move(m_found);
    }

private:
    /// @param levels  of the folders below it that are looked into
    void add(const std::string& folder, int levels)
    {
        if (m_seen.insert(folder).second)
            m_waiting.emplace_back(folder, levels);
    }

    void lookInto(const std::string& folder, int levels)
    {
        const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(folder.c_str()), closedir);
        std::vector<std::string> folders;
        while (directory && m_entries < mostEntries) {
            const dirent* entry = readdir(directory.get());
            if (!entry)
                break;
            ++m_entries;
            const std::string name = entry->d_name;
            const std::string path = folder + "/" + name;
            if (name.front() == '.')
                continue;
            if (entry->d_type == DT_DIR)
                folders.push_back(path);
            else if (entry->d_type == DT_REG)
                take(path, name);
            else if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN)
                follow(path, name, folders);
        }
        std::sort(folders.begin(), folders.end());
        for (std::size_t i = 0; levels > 0 && i < folders.size(); ++i)
            add(folders[i], levels - 1);
    }

    void take(const std::string& path, const std::string& name)
    {
        if (mayBeNamed(name, m_model))
            m_found.push_back(path);
    }

    /// What a link leads to counts where it lies itself.
    void follow(const std::string& path, const std::string& name, std::vector<std::string>& folders)
    {
        const std::string real = realPath(path);
        struct stat status;
        if (real.empty() || !m_places.admit(real) || stat(real.c_str(), &status) != 0)
            return;
        if (S_ISDIR(status.st_mode) && real == path)
            folders.push_back(path);
        else if (S_ISREG(status.st_mode))
            take(path, name);
        if (S_ISREG(status.st_mode) && real != path)
            take(real, name);
    }

    const ModelPlaces& m_places;
    const Format& m_model;
    std::deque<std::pair<std::string, int>> m_waiting;
    std::set<std::string> m_seen;
    std::vector<std::string> m_found;
    std::size_t m_entries = 0;
};

} // namespace

std::string realPath(const std::string& path)
{
    char resolved[PATH_MAX];
    return path.find('\0') == std::string::npos && realpath(path.c_str(), resolved) ? resolved
                                                                                    : std::string();
}

ModelPlaces::ModelPlaces(const std::string& path) : model(realPath(path))
{
    const std::size_t slash = path.rfind('/');
    for (const std::string& folder : {realPath(slash == std::string::npos ? "." : path.substr(0, slash + 1)),
                                      model.substr(0, model.rfind('/'))})
    {
        if (folder.empty() || std::count(folders.begin(), folders.end(), folder) > 0)
            continue;
        folders.push_back(folder);
        const std::string parent = folder.substr(0, folder.rfind('/'));
        if (!parent.empty() && isOfSameUser(parent, folder))
            above.push_back(parent);
    }
}

bool ModelPlaces::admit(const std::string& file) const
{
    const auto holds = [&file](const std::string& folder) { return isBelow(file, folder); };
    return file == model || std::any_of(folders.begin(), folders.end(), holds) ||
           std::any_of(above.begin(), above.end(), holds);
}

std::vector<std::string> admittedOf(const std::string& model, const std::vector<std::string>& files)
{
    const Format* format = formatOf(model);
    const ModelPlaces places(model);
    std::vector<std::string> admitted;
    for (const std::string& file : files) {
        struct stat status;
        if (format && realPath(file) == file && places.admit(file) && mayBeNamed(file, *format) &&
            stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode))
            admitted.push_back(file);
    }
    return admitted;
}

std::vector<std::string> findSideFiles(const std::string& model)
{
    const Format* format = formatOf(model);
    if (!format || format->standsAlone)
        return {};
    return Search(ModelPlaces(model), *format).run();
}

} // namespace vfFormats
