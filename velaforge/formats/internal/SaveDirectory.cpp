// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/SaveDirectory.h>

#include <velaforge/base/ReplaceFile.h>
#include <velaforge/formats/internal/SideNames.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfFormats {

namespace fs = std::filesystem;

namespace {

const char* const prefix = ".velaforge-save-";
constexpr std::size_t randomLetters = 6;

/// Opens a directory and locks it without waiting. @return its descriptor; negative when another process holds the lock
int lockDirectory(const std::string& path)
{
    const int directory = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (directory >= 0 && flock(directory, LOCK_EX | LOCK_NB) != 0) {
        close(directory);
        return -1;
    }
    return directory;
}

void removeAbandoned(const std::string& directory)
{
    std::error_code problem;
    std::vector<std::string> found;
    for (fs::directory_iterator entry(directory, problem), end; !problem && entry != end;
         entry.increment(problem))
    {
        const std::string name = entry->path().filename().string();
        if (name.compare(0, std::strlen(prefix), prefix) == 0 &&
            name.size() == std::strlen(prefix) + randomLetters)
            found.push_back(entry->path().string());
    }
    for (const std::string& path : found) {
        struct stat status;
        const int lock = lockDirectory(path);
        std::error_code ignored;
        if (lock >= 0 && fstat(lock, &status) == 0 && status.st_uid == geteuid())
            fs::remove_all(path, ignored);
        if (lock >= 0)
            close(lock);
    }
}

/// Returns the file that links lead to; the path itself where there is none yet.
std::string behindLinks(const std::string& path)
{
    std::error_code problem;
    const fs::path real = fs::weakly_canonical(path, problem);
    return problem ? path : real.string();
}

bool isDevice(const std::string& path)
{
    std::error_code problem;
    const fs::file_status status = fs::status(path, problem);
    return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

} // namespace

SaveDirectory::SaveDirectory(const std::string& target) : m_target(behindLinks(target))
{
    // What is written to a device or a FIFO is copied there at the end.
    m_directory = isDevice(target) ? fs::temp_directory_path().string() : osgDB::getFilePath(m_target);
    if (isDevice(target))
        m_target = target;
    removeAbandoned(m_directory);
    for (int tries = 0; tries < 100 && m_path.empty(); ++tries) {
        std::string name = m_directory + "/" + prefix + std::string(randomLetters, 'X');
        if (!mkdtemp(name.data())) {
            m_reason = std::strerror(errno);
            return;
        }
        m_lock = lockDirectory(name);
        struct stat status;
        if (m_lock >= 0 && stat(name.c_str(), &status) == 0)
            m_path = name;
        else if (m_lock >= 0)
            close(m_lock); // another process removed it as abandoned before it was locked
    }
    // The name that was typed tells the format; without a link between them both are the same.
    const bool isSameFormat =
        osgDB::getLowerCaseFileExtension(target) == osgDB::getLowerCaseFileExtension(m_target);
    m_draft = m_path + "/" + osgDB::getSimpleFileName(isSameFormat ? m_target : target);
    if (m_path.empty())
        m_reason = "no directory could be made for it";
}

SaveDirectory::~SaveDirectory()
{
    std::error_code ignored;
    if (!m_path.empty())
        fs::remove_all(m_path, ignored);
    if (m_lock >= 0)
        close(m_lock);
}

std::string SaveDirectory::commit()
{
    vfBase::VfString reason;
    if (isDevice(m_target)) {
        std::ifstream file(m_draft, std::ios::binary);
        if (!file.is_open())
            return std::strerror(errno);
        const std::string contents((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        return vfBase::replaceFile(m_target, contents, reason) ? std::string() : reason.str();
    }
    const std::string model = osgDB::getSimpleFileName(m_draft);
    std::vector<std::string> beside;
    std::error_code problem;
    for (fs::directory_iterator entry(m_path, problem), end; !problem && entry != end;
         entry.increment(problem)) {
        if (entry->path().string() != m_draft)
            beside.push_back(entry->path().filename().string());
    }
    if (problem)
        return problem.message();
    std::vector<std::string> former;
    for (fs::directory_iterator entry(m_directory, problem), end; !problem && entry != end;
         entry.increment(problem))
    {
        const std::string name = entry->path().filename().string();
        if (osgDB::getLowerCaseFileExtension(name) == "mtl" && isMaterialsOf(entry->path().string(), model) &&
            std::find(beside.begin(), beside.end(), name) == beside.end())
            former.push_back(name);
    }
    for (const std::string& name : beside) {
        const std::string failure = moveBeside(name);
        if (!failure.empty())
            return failure;
    }
    if (!vfBase::replaceFileBy(m_target, m_draft, reason))
        return reason.str();
    for (const std::string& name : former)
        unlink((m_directory + "/" + name).c_str());
    return std::string();
}

std::string SaveDirectory::moveBeside(const std::string& name) const
{
    const std::string from = m_path + "/" + name;
    const std::string to = m_directory + "/" + name;
    vfBase::VfString reason;
    if (isMaterialsOf(to, osgDB::getSimpleFileName(m_draft)))
        return vfBase::replaceFileBy(to, from, reason) ? std::string() : name + ": " + reason.str();
    // Between the choice of the name and now another program may have taken it.
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return std::string();
    if (errno == EINVAL && !fs::exists(to) && std::rename(from.c_str(), to.c_str()) == 0)
        return std::string(); // a file system without that call
    return name + ": " + std::strerror(errno);
}

} // namespace vfFormats
