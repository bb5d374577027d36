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
    return draft.isOpen() && (!exists || draft.copyAttributesOfTarget()) && draft.write(contents) &&
           draft.replaceTarget();
}

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
    return (!exists || copyAttributesOf(path, file)) && flush(file) &&
           rename(draft.c_str(), path.c_str()) == 0;
}

/// Replaces a file by one of two functions, which return whether they succeeded and otherwise leave the reason in errno.
/// @param regular  called for a regular file or none, with the path behind links and whether the file exists
/// @param special  called for a device or a FIFO, with the path behind links
/// @param reason   set on failure
template <typename Regular, typename Special>
bool replace(const VfString& path, const Regular& regular, const Special& special, VfString& reason)
{
    if (path.empty() || path.str().find('\0') != std::string::npos) {
        reason = "this is no file name";
        return false;
    }
    const std::string target = behindLinks(path.str());
    struct stat status;
    const bool exists = lstat(target.c_str(), &status) == 0;
    bool done = false;
    if (exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
    } else if (exists && !S_ISREG(status.st_mode)) {
        done = special(target);
    } else if (isWritable(target)) {
        done = regular(target, exists);
        if (done)
            flushDirectory(
                directoryOf(target)); // after a power failure the target is the old or the new file, whole
    }
    if (!done)
        reason = systemReason();
    return done;
}

} // namespace

bool replaceFile(const VfString& path, const std::string& contents, VfString& reason)
{
    const WriteSignalsHeld held;
    return replace(
        path,
        [&](const std::string& target, bool exists) { return replaceRegular(target, contents, exists); },
        [&](const std::string& target) { return writeDirectly(target, contents); }, reason);
}

bool replaceFileBy(const VfString& path, const VfString& draft, VfString& reason)
{
    const auto refuse = [](const std::string&) {
        errno = EINVAL;
        return false;
    };
    return replace(
        path,
        [&](const std::string& target, bool exists) { return replaceRegularBy(target, draft.str(), exists); },
        refuse, reason);
}

} // namespace vfBase
