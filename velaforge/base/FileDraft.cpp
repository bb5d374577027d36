// SPDX-License-Identifier: MIT
#include <velaforge/base/FileDraft.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace vfBase::posix {

namespace {

constexpr std::size_t digitsInName = 16;

/// Returns the part of a draft's name before its digits.
std::string draftPrefix(const std::string& target)
{
    std::string name = nameOf(target);
    std::size_t length = 200; // with the rest it fits into 255 bytes, the limit of file systems
    if (name.size() > length) {
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80)
            --length; // not inside a UTF-8 character
        name.resize(length);
    }
    return "." + name + ".draft-";
}

bool isDraftName(const std::string& name, const std::string& prefix)
{
    return name.size() == prefix.size() + digitsInName && name.compare(0, prefix.size(), prefix) == 0 &&
           name.find_first_not_of("0123456789abcdef", prefix.size()) == std::string::npos;
}

/// Returns whether the open file still has that name.
bool isSameFile(int descriptor, const std::string& path)
{
    struct stat opened;
    struct stat named;
    return fstat(descriptor, &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Locks without waiting.
/// @return false if another descriptor holds the lock
bool lockDraft(int descriptor)
{
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR)
            return errno != EWOULDBLOCK; // a file system without locks: only the draft's name protects it
    }
    return true;
}

void removeIfAbandoned(const std::string& path)
{
    // For writing: network file systems lock such files only.
    const Descriptor draft(path, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (!draft.isOpen() || fstat(draft, &status) != 0 || !S_ISREG(status.st_mode))
        return;
    if (flock(draft, LOCK_EX | LOCK_NB) == 0 && isSameFile(draft, path))
        unlink(path.c_str());
}

/// Calls @p read with buffers of growing size until the result fits.
/// @return the result; nothing on failure
template <class Read>
std::optional<std::string> readGrowing(const Read& read)
{
    for (std::size_t size = 4096; size <= std::size_t{1} << 20; size *= 2) {
        std::string buffer(size, '\0');
        const ssize_t length = read(buffer.data(), buffer.size());
        if (length >= 0) {
            buffer.resize(static_cast<std::size_t>(length));
            return buffer;
        }
        if (errno != ERANGE)
            return std::nullopt;
    }
    return std::nullopt;
}

bool copyAttribute(const char* name, int from, int to)
{
    const auto value =
        readGrowing([=](char* buffer, std::size_t size) { return fgetxattr(from, name, buffer, size); });
    return value && fsetxattr(to, name, value->data(), value->size(), 0) == 0;
}

/// Returns whether an attribute depends on the contents, as capabilities and signatures do.
bool belongsToContents(const std::string& name)
{
    return name == "security.capability" || name == "security.ima" || name == "security.evm";
}

/// Copies the extended attributes.
/// @return false if @p from has, or may have, an access list that @p to did not get
bool copyAttributes(int from, int to)
{
    const auto names =
        readGrowing([=](char* buffer, std::size_t size) { return flistxattr(from, buffer, size); });
    if (!names)
        return errno == ENOTSUP;
    bool hasAccessList = false;
    bool keptAccessLists = true;
    for (std::size_t at = 0; at < names->size();) {
        const std::string name = names->c_str() + at;
        at += name.size() + 1;
        if (belongsToContents(name))
            continue;
        const bool isCopied = copyAttribute(name.c_str(), from, to);
        const bool isAccessList = name.compare(0, 7, "system.") == 0; // the name depends on the file system
        hasAccessList = hasAccessList || isAccessList;
        keptAccessLists = keptAccessLists && (isCopied || !isAccessList);
    }
    if (!hasAccessList)
        fremovexattr(to, "system.posix_acl_access"); // the draft may have one from the directory's default
    return keptAccessLists;
}

/// Returns the permissions that group and others had in common, for both.
mode_t withCommonAccess(mode_t mode)
{
    const mode_t common = (mode >> 3) & mode & 07u;
    return (mode & ~mode_t{077}) | (common << 3) | common;
}

} // namespace

bool copyAttributesOf(const std::string& path, int descriptor)
{
    // A file without read permission has attributes too.
    const int flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    const Descriptor readable(path, O_RDONLY | flags);
    const Descriptor writable(readable.isOpen() ? std::string() : path, O_WRONLY | flags);
    const int original = readable.isOpen() ? readable : writable;
    struct stat status;
    struct stat own;
    if (original < 0 || fstat(original, &status) != 0 || fstat(descriptor, &own) != 0)
        return false;

    // The owner first: the file must not be accessible to the wrong group at any moment.
    if (own.st_uid != status.st_uid)
        (void)!fchown(descriptor, status.st_uid, static_cast<gid_t>(-1));
    const bool keepsGroup =
        own.st_gid == status.st_gid || fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) == 0;
    mode_t mode = status.st_mode & 01777;
    if (!keepsGroup)
        mode = withCommonAccess(mode);
    if (!copyAttributes(original, descriptor))
        mode &= ~mode_t{077};
    // Fails on a file system without permissions, where all files have the same.
    fchmod(descriptor, mode);
    return true;
}

FileDraft::FileDraft(const std::string& target, mode_t mode) : m_target(target)
{
    const std::string prefix = directoryOf(target) + "/" + draftPrefix(target);
    for (int tries = 0; tries < 100; ++tries) {
        std::uint64_t number = 0;
        if (getentropy(&number, sizeof(number)) != 0)
            return;
        char digits[digitsInName + 1];
        std::snprintf(digits, sizeof(digits), "%016llx", static_cast<unsigned long long>(number));
        const std::string path = prefix + digits;
        const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        if (descriptor < 0 && errno == EEXIST)
            continue;
        if (descriptor < 0)
            return;
        // Between open and flock another process may have removed the draft as abandoned.
        if (lockDraft(descriptor) && isSameFile(descriptor, path)) {
            m_path = path;
            m_descriptor = descriptor;
            return;
        }
        unlink(path.c_str());
        ::close(descriptor);
        errno = EAGAIN;
    }
}

FileDraft::~FileDraft()
{
    const int error = errno;
    if (!m_path.empty())
        unlink(m_path.c_str());
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    errno = error;
}

bool FileDraft::write(const std::string& contents)
{
    if (!writeAll(m_descriptor, contents.data(), contents.size()) || !flush(m_descriptor))
        return false;
    // Some file systems report a failed write only on close. A duplicate is closed, so that the lock stays.
    const int copy = fcntl(m_descriptor, F_DUPFD_CLOEXEC, 0);
    return copy >= 0 && (::close(copy) == 0 || errno == EINTR);
}

bool FileDraft::replaceTarget()
{
    if (rename(m_path.c_str(), m_target.c_str()) != 0)
        return false;
    m_path.clear();
    return true;
}

void FileDraft::removeAbandoned(const std::string& target)
{
    const std::string directory = directoryOf(target);
    const std::string prefix = draftPrefix(target);
    DIR* const entries = opendir(directory.c_str());
    if (!entries)
        return;
    while (const dirent* const entry = readdir(entries)) {
        if (isDraftName(entry->d_name, prefix))
            removeIfAbandoned(directory + "/" + entry->d_name);
    }
    closedir(entries);
}

} // namespace vfBase::posix
