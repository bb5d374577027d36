// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <string>

namespace vfBase {

/// A file that shows that a program runs: it is locked while the object lives, and the system releases the lock of a program
/// that was killed.
///
///     LockFile lock(directory + "/session-", ".lock");
///     if (lock.isHeld())
///         keepFiles(lock.path());
class VFBASE_EXPORT LockFile
{
public:
    /// Makes and locks a file with a name of its own.
    /// @param beginning  of the path, directory included; six characters follow
    /// @param ending     of the name
    LockFile(const std::string& beginning, const std::string& ending);
    /// Removes the file.
    ~LockFile();

    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    /// Returns whether the file could be made.
    bool isHeld() const { return m_descriptor >= 0; }

    /// Returns the path of the file.
    const std::string& path() const { return m_path; }

    /// Returns whether a lock file belongs to a program that has ended without removing it.
    static bool isAbandoned(const std::string& path);

private:
    std::string m_path;
    int m_descriptor = -1;
};

} // namespace vfBase
