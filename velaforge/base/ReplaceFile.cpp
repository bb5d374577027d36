// SPDX-License-Identifier: MIT
#include <velaforge/base/ReplaceFile.h>

#include <velaforge/base/PosixFiles.h>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfBase {

using namespace posix;

namespace {

bool writeDirectly(const std::string& path, const std::string& contents)
{
    Descriptor file(path, O_WRONLY | O_NOCTTY);
    return file.isOpen() && writeAll(file, contents.data(), contents.size()) && file.close();
}

bool replaceRegular(const std::string& path, const std::string& contents, mode_t mode)
{
    const std::string newPath =
        directoryOf(path) + "/." + nameOf(path).substr(0, 200) + ".new-" + std::to_string(getpid());
    unlink(newPath.c_str()); // left by a process of that number that was killed
    if (!writeNewFile(newPath, contents, mode))
        return false;
    if (rename(newPath.c_str(), path.c_str()) == 0) {
        flushDirectory(directoryOf(path)); // the file is whole either way
        return true;
    }
    const int error = errno;
    unlink(newPath.c_str());
    errno = error;
    return false;
}

} // namespace

bool replaceFile(const VfString& path, const std::string& contents, VfString& reason)
{
    const FileSizeSignalHeld held;
    if (path.empty() || path.str().find('\0') != std::string::npos) {
        reason = "this is no file name";
        return false;
    }
    const std::string target = behindLinks(path.str());
    struct stat status;
    const bool exists = stat(target.c_str(), &status) == 0;
    bool done = false;
    if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
    } else if (exists && !S_ISREG(status.st_mode)) {
        done = writeDirectly(target, contents);
    } else if (!isWritable(target)) {
        done = false;
    } else {
        done = replaceRegular(target, contents, exists ? status.st_mode & 0777 : 0666);
    }
    if (!done)
        reason = systemReason();
    return done;
}

} // namespace vfBase
