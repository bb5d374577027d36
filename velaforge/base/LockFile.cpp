// SPDX-License-Identifier: MIT
#include <velaforge/base/LockFile.h>

#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace vfBase {

LockFile::LockFile(const std::string& beginning, const std::string& ending)
    : m_path(beginning + "XXXXXX" + ending),
      m_descriptor(mkostemps(m_path.data(), static_cast<int>(ending.size()), O_CLOEXEC))
{
    if (m_descriptor >= 0)
        flock(m_descriptor, LOCK_EX | LOCK_NB); // a new file, which no other program has locked
}

LockFile::~LockFile()
{
    if (m_descriptor < 0)
        return;
    unlink(m_path.c_str());
    close(m_descriptor);
}

bool LockFile::isAbandoned(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    const bool isFree = file >= 0 && flock(file, LOCK_EX | LOCK_NB) == 0;
    if (file >= 0)
        close(file);
    return isFree;
}

} // namespace vfBase
