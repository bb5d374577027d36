// SPDX-License-Identifier: MIT
#include <velaforge/base/StandardPaths.h>

#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/InternedText.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace vfBase {

namespace {

std::string withoutTrailingSlash(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// Returns an absolute path from the environment; the empty text for any other value.
std::string fromEnvironment(const char* name)
{
    const char* value = std::getenv(name);
    return value && value[0] == '/' ? withoutTrailingSlash(value) : std::string();
}

std::string home()
{
    std::string fromVariable = fromEnvironment("HOME");
    if (!fromVariable.empty())
        return fromVariable;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_dir &&
        found->pw_dir[0] == '/')
        return withoutTrailingSlash(found->pw_dir);
    return "/";
}

std::string below(const std::string& directory, const std::string& name)
{
    return directory == "/" ? "/" + name : directory + "/" + name;
}

std::string baseDirectory(const char* variable, const char* inHome)
{
    const std::string set = fromEnvironment(variable);
    return set.empty() ? below(home(), inHome) : set;
}

std::string temporary()
{
    const std::string set = fromEnvironment("TMPDIR");
    return set.empty() ? "/tmp" : set;
}

/// Reads one line of the form NAME="$HOME/Documents" or NAME="/data/documents", the only valid forms.
bool parseUserDirectory(const std::string& line, const std::string& name, std::string& path)
{
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == std::string::npos || line.compare(begin, name.size() + 2, name + "=\"") != 0)
        return false;
    std::string value;
    std::size_t i = begin + name.size() + 2;
    for (; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size())
            ++i;
        value += line[i];
    }
    if (i == line.size())
        return false;
    if (value == "$HOME")
        path = home();
    else if (value.compare(0, 6, "$HOME/") == 0)
        path = withoutTrailingSlash(below(home(), value.substr(6)));
    else if (!value.empty() && value[0] == '/')
        path = withoutTrailingSlash(value);
    else
        return false;
    return true;
}

/// Returns the directory that the user configured, otherwise the one with that name in the home directory.
std::string userDirectory(const char* name, const char* inHome)
{
    std::string path = below(home(), inHome);
    std::ifstream file(below(baseDirectory("XDG_CONFIG_HOME", ".config"), "user-dirs.dirs"));
    std::string line;
    while (std::getline(file, line))
        parseUserDirectory(line, std::string("XDG_") + name + "_DIR", path);
    return path;
}

std::string ofApplication(std::string directory)
{
    const ApplicationInfo& info = ApplicationInfo::instance();
    for (const char* text : {info.getApplicationVendorShortName(), info.getApplicationName()}) {
        const std::string name = makePathComponent(text);
        if (!name.empty())
            directory = below(directory, name);
    }
    return directory;
}

std::string runtime()
{
    const std::string set = fromEnvironment("XDG_RUNTIME_DIR");
    return set.empty() ? below(temporary(), "runtime-" + std::to_string(getuid())) : set;
}

std::string find(StandardPaths::StandardLocation location)
{
    switch (location) {
    case StandardPaths::Desktop:
        return userDirectory("DESKTOP", "Desktop");
    case StandardPaths::Documents:
        return userDirectory("DOCUMENTS", "Documents");
    case StandardPaths::Fonts:
        return below(baseDirectory("XDG_DATA_HOME", ".local/share"), "fonts");
    case StandardPaths::Applications:
        return below(baseDirectory("XDG_DATA_HOME", ".local/share"), "applications");
    case StandardPaths::Music:
        return userDirectory("MUSIC", "Music");
    case StandardPaths::Movies:
        return userDirectory("VIDEOS", "Videos");
    case StandardPaths::Pictures:
        return userDirectory("PICTURES", "Pictures");
    case StandardPaths::Temp:
        return temporary();
    case StandardPaths::Home:
        return home();
    case StandardPaths::LocalData:
    case StandardPaths::ApplicationData:
        return ofApplication(baseDirectory("XDG_DATA_HOME", ".local/share"));
    case StandardPaths::Cache:
        return ofApplication(baseDirectory("XDG_CACHE_HOME", ".cache"));
    case StandardPaths::GenericData:
        return baseDirectory("XDG_DATA_HOME", ".local/share");
    case StandardPaths::Runtime:
        return runtime();
    case StandardPaths::Config:
    case StandardPaths::GenericConfig:
        return baseDirectory("XDG_CONFIG_HOME", ".config");
    case StandardPaths::Download:
        return userDirectory("DOWNLOAD", "Downloads");
    case StandardPaths::GenericCache:
        return baseDirectory("XDG_CACHE_HOME", ".cache");
    }
    return std::string();
}

} // namespace

const char* StandardPaths::standardLocation(StandardLocation location)
{
    return internedText(find(location));
}

} // namespace vfBase
