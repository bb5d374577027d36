// SPDX-License-Identifier: MIT
#include <velaforge/base/ReplaceFile.h>

#include <velaforge/base/FileDraft.h>
#include <velaforge/base/PosixFiles.h>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace vfBase {

using namespace posix;

namespace {

bool writeDirectly(const std::string& path, const std::string& contents)
{
    // A regular file is reached here through a link of procfs only, as by /dev/stdout: it is open elsewhere,
    // and what was written there before stays.
    Descriptor file(path, O_WRONLY | O_APPEND | O_NOCTTY);
    return file.isOpen() && writeAll(file, contents.data(), contents.size()) && file.close();
}

bool replaceRegular(const std::string& path, const std::string& contents, bool exists)
{
    FileDraft::removeAbandoned(path);
    FileDraft draft(path, exists ? 0600 : 0666);
    if (!draft.isOpen() || (exists && !draft.copyAttributesOfTarget()) || !draft.write(contents) ||
        !draft.replaceTarget())
        return false;
    flushDirectory(directoryOf(path)); // after a power failure either file is there, and whole
    return true;
}

} // namespace

bool replaceFile(const VfString& path, const std::string& contents, VfString& reason)
{
    const WriteSignalsHeld held;
    if (path.empty() || path.str().find('\0') != std::string::npos) {
        reason = "this is no file name";
        return false;
    }
    const std::string target = behindLinks(path.str());
    struct stat status;
    const bool exists = lstat(target.c_str(), &status) == 0;
    bool done = false;
    if (exists && S_ISDIR(status.st_mode))
        errno = EISDIR;
    else if (exists && !S_ISREG(status.st_mode))
        done = writeDirectly(target, contents);
    else if (isWritable(target))
        done = replaceRegular(target, contents, exists);
    if (!done)
        reason = systemReason();
    return done;
}

namespace {

bool replaceRegularBy(const std::string& path, const std::string& draft, bool exists)
{
    const Descriptor file(draft, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (!file.isOpen() || fstat(file, &status) != 0)
        return false;
    if (!S_ISREG(status.st_mode)) {
        errno = EINVAL;
        return false;
    }
    if ((exists && !copyAttributesOf(path, file)) || !flush(file) || rename(draft.c_str(), path.c_str()) != 0)
        return false;
    flushDirectory(directoryOf(path)); // after a power failure either file is there, and whole
    return true;
}

} // namespace

bool replaceFileBy(const VfString& path, const VfString& draft, VfString& reason)
{
    if (path.empty() || path.str().find('\0') != std::string::npos) {
        reason = "this is no file name";
        return false;
    }
    const std::string target = behindLinks(path.str());
    struct stat status;
    const bool exists = lstat(target.c_str(), &status) == 0;
    bool done = false;
    if (exists && !S_ISREG(status.st_mode))
        errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    else if (isWritable(target))
        done = replaceRegularBy(target, draft.str(), exists);
    if (!done)
        reason = systemReason();
    return done;
}

} // namespace vfBase
