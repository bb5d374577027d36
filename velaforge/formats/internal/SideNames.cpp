// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/SideNames.h>

#include <velaforge/formats/internal/PlainText.h>

#include <osgDB/FileNameUtils>

#include <filesystem>
#include <fstream>
#include <utility>

namespace vfFormats {

namespace fs = std::filesystem;

namespace {

/// Materials are named at the beginning of a model; those of others that name them later keep them under the wrong name at
/// worst, because files of others are never replaced.
constexpr std::size_t beginning = std::size_t(64) * 1024;

std::string read(const std::string& path, std::size_t most)
{
    std::string text(most, '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(most));
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

bool hasContents(const std::string& path, const std::string& contents)
{
    std::error_code problem;
    return fs::is_regular_file(path, problem) && fs::file_size(path, problem) == contents.size() &&
           read(path, contents.size()) == contents;
}

/// Returns the name with a number before its extension; without one for the number 1.
std::string numbered(const std::string& name, int number)
{
    if (number == 1)
        return name;
    const fs::path path(name);
    return path.stem().string() + "-" + std::to_string(number) + path.extension().string();
}

bool isThereAs(const std::string& path)
{
    std::error_code problem;
    return fs::symlink_status(path, problem).type() != fs::file_type::not_found;
}

} // namespace

SideNames::SideNames(std::string directory, const std::string& model)
    : m_directory(std::move(directory)), m_model(model), m_stem(osgDB::getStrippedName(model))
{}

std::string SideNames::choose(const std::string& wanted, const std::string& contents,
                              const std::set<std::string>& taken, bool& isThere) const
{
    for (int number = 1;; ++number) {
        std::string name = numbered(wanted, number);
        const std::string path = m_directory + "/" + name;
        isThere = hasContents(path, contents);
        if (isThere || (!isThereAs(path) && name != m_model && taken.count(name) == 0))
            return name;
    }
}

std::string SideNames::chooseMaterials() const
{
    for (int number = 1;; ++number) {
        std::string name = numbered(m_stem + ".mtl", number);
        const std::string path = m_directory + "/" + name;
        if (!isThereAs(path) ||
            (isMaterialsOf(path, m_model) && !refersTo(m_directory + "/" + m_model, name)))
            return name;
    }
}

std::string SideNames::relative(const std::string& path) const
{
    std::error_code problem;
    const fs::path file = fs::canonical(path, problem);
    if (problem || !fs::is_regular_file(file, problem))
        return std::string();
    const std::string directory = fs::canonical(m_directory, problem).string() + "/";
    const std::string whole = file.string();
    const bool isBelow = whole.compare(0, directory.size(), directory) == 0 &&
                         whole.find("/.", directory.size() - 1) == std::string::npos;
    return isBelow ? whole.substr(directory.size()) : std::string();
}

std::string materialsOwner(const std::string& modelName)
{
    return "# materials of " + lineOf(modelName) + ", written by velaFORGE\n";
}

bool isMaterialsOf(const std::string& path, const std::string& modelName)
{
    const std::string owner = materialsOwner(modelName);
    std::error_code problem;
    return fs::is_regular_file(fs::symlink_status(path, problem)) && read(path, owner.size()) == owner;
}

bool refersTo(const std::string& model, const std::string& materials)
{
    const std::string text = "\n" + read(model, beginning);
    return text.find("\nmtllib " + materials + "\n") != std::string::npos ||
           text.find("\nmtllib " + materials + "\r") != std::string::npos;
}

} // namespace vfFormats
