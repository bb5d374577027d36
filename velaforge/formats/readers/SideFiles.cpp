// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/SideFiles.h>

#include <velaforge/formats/internal/SideFileSearch.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>
#include <unordered_map>
#include <utility>

#include <sys/stat.h>

namespace vfFormats {

namespace fs = std::filesystem;

struct SideFiles::Rule
{
    explicit Rule(const std::string& model) : places(model) {}

    ModelPlaces places;
    std::set<std::string> files;
    // By paths and by names in lower case, in the order in which they were found.
    std::unordered_map<std::string, std::vector<std::string>> byPath;
    std::unordered_map<std::string, std::vector<std::string>> byName;
};

namespace {

/// Of a path from another computer only so many of the last folders are looked for.
constexpr std::size_t mostParts = 16;

thread_local const void* ruleInForce = nullptr;

constexpr std::size_t mostMissed = 100;
thread_local std::vector<std::string> missed;

void noteMissed(const std::string& name)
{
    if (missed.size() < mostMissed && std::find(missed.begin(), missed.end(), name) == missed.end())
        missed.push_back(name);
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

} // namespace

/// What a name leads to, by the files that are there.
class SideFiles::Finder
{
public:
    /// @param directories  where the file may lie, before those of the model
    Finder(const Rule& rule, const std::vector<std::string>& directories) : m_rule(rule)
    {
        for (const std::string& directory : directories)
            m_folders.push_back(realPath(directory.empty() ? "." : directory));
        m_folders.insert(m_folders.end(), rule.places.folders.begin(), rule.places.folders.end());
        m_around = m_folders;
        m_around.insert(m_around.end(), rule.places.above.begin(), rule.places.above.end());
    }

    std::string find(const std::string& path) const
    {
        const bool isAbsolute = path.front() == '/';
        if (isAbsolute && isAdmitted(path))
            return path;
        for (const std::string& folder : m_folders) {
            if (!isAbsolute && !folder.empty() && isAdmitted(folder + "/" + path))
                return folder + "/" + path;
        }
        const std::vector<std::string> parts = partsOf(path);
        if (parts.empty())
            return std::string();
        // The model may have been moved with the folders beside it.
        const std::size_t last = parts.size() - 1;
        for (std::size_t first = last > mostParts ? last - mostParts : 0; first <= last; ++first) {
            for (const std::string& folder : m_folders) {
                const std::string found = follow(folder, parts, first);
                if (!found.empty())
                    return found;
            }
        }
        return findAround(parts.back());
    }

private:
    /// Returns the file that the parts from @p first on lead to, in whatever capitals.
    std::string follow(const std::string& folder, const std::vector<std::string>& parts,
                       std::size_t first) const
    {
        std::string path = folder;
        for (std::size_t i = first; i < parts.size(); ++i)
            path += "/" + parts[i];
        const auto found = m_rule.byPath.find(osgDB::convertToLowerCase(path));
        if (folder.empty() || found == m_rule.byPath.end())
            return std::string();
        const std::vector<std::string>& files = found->second;
        return std::find(files.begin(), files.end(), path) != files.end() ? path : files.front();
    }

    /// Returns the file of a name in a folder that lies in one of those around the model.
    std::string findAround(const std::string& name) const
    {
        const auto found = m_rule.byName.find(osgDB::convertToLowerCase(name));
        for (const std::string& folder : m_around) {
            std::string first;
            for (std::size_t i = 0; found != m_rule.byName.end() && i < found->second.size(); ++i) {
                const std::string& file = found->second[i];
                const std::string place = osgDB::getFilePath(file);
                if (osgDB::getFilePath(place) == folder &&
                    (first.empty() || place < osgDB::getFilePath(first)))
                    first = file;
            }
            if (!first.empty())
                return first;
        }
        return std::string();
    }

    const Rule& m_rule;
    std::vector<std::string> m_folders;
    std::vector<std::string> m_around; ///< whose folders are searched
};

SideFiles::SideFiles(const std::string& model, const std::vector<std::string>& files)
    : m_rule(nullptr), m_former(static_cast<const Rule*>(ruleInForce))
{
    auto* rule = new Rule(model);
    m_rule = rule;
    for (const std::string& file : files) {
        rule->files.insert(file);
        rule->byPath[osgDB::convertToLowerCase(file)].push_back(file);
        rule->byName[osgDB::convertToLowerCase(osgDB::getSimpleFileName(file))].push_back(file);
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
    const bool isListed = real == rule.places.model || rule.files.count(real) > 0;
    if (!isListed)
        noteMissed(real);
    return isListed;
}

std::string SideFiles::find(const std::string& name, const std::vector<std::string>& directories)
{
    const std::string tidy = tidied(name);
    if (!isInForce() || tidy.empty() || tidy.find('\0') != std::string::npos)
        return std::string();
    const Finder finder(*static_cast<const Rule*>(ruleInForce), directories);
    std::string found = finder.find(tidy);
    const std::string plain = withoutPercents(tidy);
    if (found.empty() && plain != tidy && plain.find('\0') == std::string::npos)
        found = finder.find(plain);
    return found;
}

std::vector<std::string> SideFiles::takeMissed()
{
    return std::exchange(missed, {});
}

} // namespace vfFormats
