// SPDX-License-Identifier: MIT
#include <velaforge/base/ReplaceFile.h>

#include <velaforge/base/FileDraft.h>
#include <velaforge/base/PosixFiles.h>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace vfBase {

using namespace posix;

namespace {

bool writeDirectly(const std::string& path, const std::string& contents)
{
    // A regular file gets here only through a link of procfs such as /dev/stdout. It is open elsewhere, so
    // its contents stay and the new ones are appended.
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
    // So that after a power failure the old or the new file exists, complete.
    flushDirectory(directoryOf(path));
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

} // namespace vfBase
