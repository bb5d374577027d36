// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfTest {

/// A directory of its own below the system's temporary directory, removed with all that is in it at the end.
class TemporaryDirectory
{
public:
    TemporaryDirectory();
    ~TemporaryDirectory();

    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::string& path() const { return m_path; }

    /// @return the path of an entry of that name in the directory; nothing is made
    std::string file(const std::string& name) const { return m_path + "/" + name; }

    /// Writes a file, with the directories it needs. @return its path
    std::string write(const std::string& name, const std::string& contents) const;

private:
    std::string m_path;
};

/// @return the whole contents of a file, empty when it cannot be read
std::string readFile(const std::string& path);

/// Writes into the file that is there, or makes one.
void overwriteFile(const std::string& path, const std::string& contents);

/// Puts another file in its place, as careful programs save.
void replaceFile(const std::string& path, const std::string& contents);

} // namespace vfTest
