// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <string>
#include <vector>

namespace vfFormats {

/// A directory in that of a file, in which the file is written before it takes its place. The destructor removes it.
///
/// It is locked by flock while the object lives; the system releases the lock of a program that was killed, so a directory
/// without a lock is abandoned. A new one removes the abandoned ones.
class VFFORMATS_EXPORT SaveDirectory
{
public:
    /// @param target  the path of the file
    explicit SaveDirectory(const std::string& target);
    ~SaveDirectory();

    SaveDirectory(const SaveDirectory&) = delete;
    SaveDirectory& operator=(const SaveDirectory&) = delete;

    /// Returns why it could not be made; empty when it is there.
    const std::string& reason() const { return m_reason; }

    /// Returns the directory of the file.
    const std::string& directory() const { return m_directory; }

    /// Returns the path under which the file is written.
    const std::string& draft() const { return m_draft; }

    /// Moves the files to their places: those beside the model first, each under a name that was free or that of materials
    /// of the former model, then the model, which is the moment that counts. Removes the materials of the former model.
    /// @return why that failed; empty when it is done. On failure the former model has all of its files
    std::string commit();

private:
    std::string moveBeside(const std::string& name) const;

    std::string m_target;
    std::string m_directory; ///< of the target
    std::string m_path;
    std::string m_draft;
    std::string m_reason;
    int m_lock = -1;
};

} // namespace vfFormats
