// SPDX-License-Identifier: MIT
#include "TemporaryDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vfTest {

namespace fs = std::filesystem;

TemporaryDirectory::TemporaryDirectory()
{
    std::string pattern = (fs::temp_directory_path() / "velaforge-test-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a temporary directory");
    m_path = pattern;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code ignored;
    for (auto entry = fs::recursive_directory_iterator(m_path, ignored); entry != fs::end(entry);
         entry.increment(ignored))
    {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_path, ignored);
}

std::string TemporaryDirectory::write(const std::string& name, const std::string& contents) const
{
    const fs::path path = file(name);
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << contents;
    return path.string();
}

std::string readFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

void overwriteFile(const std::string& path, const std::string& contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}

void replaceFile(const std::string& path, const std::string& contents)
{
    overwriteFile(path + ".new", contents);
    fs::rename(path + ".new", path);
}

} // namespace vfTest
