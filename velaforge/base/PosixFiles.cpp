// SPDX-License-Identifier: MIT
#include <velaforge/base/PosixFiles.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

namespace vfBase::posix {

std::string systemReason()
{
    return std::strerror(errno);
}

std::string directoryOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

namespace {

/// Returns whether the link is one of procfs, which names an open file: its text is no path for a pipe, and
/// not always one for a file.
bool isInProcfs(const std::string& link)
{
    struct statfs status;
    return statfs(directoryOf(link).c_str(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

} // namespace

std::string behindLinks(std::string path)
{
    for (int hops = 0; hops < 40; ++hops) {
        char target[PATH_MAX];
        const ssize_t length = readlink(path.c_str(), target, sizeof(target));
        if (length <= 0 || length == static_cast<ssize_t>(sizeof(target)) || isInProcfs(path))
            return path;
        std::string next = target[0] == '/' ? std::string() : directoryOf(path).append("/");
        path = next.append(target, static_cast<std::size_t>(length));
    }
    return path;
}

Descriptor::Descriptor(const std::string& path, int flags, mode_t mode)
    : m_value(open(path.c_str(), flags | O_CLOEXEC, mode))
{}

Descriptor::~Descriptor()
{
    if (m_value >= 0)
        ::close(m_value);
}

bool Descriptor::close()
{
    const int value = m_value;
    m_value = -1;
    return ::close(value) == 0 || errno == EINTR;
}

WriteSignalsHeld::WriteSignalsHeld()
{
    sigset_t pending;
    sigpending(&pending);
    sigemptyset(&m_signals);
    for (const int number : {SIGXFSZ, SIGPIPE}) {
        if (sigismember(&pending, number) != 1)
            sigaddset(&m_signals, number);
    }
    pthread_sigmask(SIG_BLOCK, &m_signals, &m_before);
}

WriteSignalsHeld::~WriteSignalsHeld()
{
    const int error = errno;
    const timespec now{0, 0};
    while (sigtimedwait(&m_signals, nullptr, &now) > 0 || errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    errno = error;
}

bool writeAll(int descriptor, const char* data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(descriptor, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            if (written == 0)
                errno = EIO;
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool flush(int descriptor)
{
    int result;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0 || errno == EINVAL || errno == ENOTSUP;
}

bool flushDirectory(const std::string& path)
{
    const Descriptor directory(path, O_RDONLY | O_DIRECTORY);
    return directory.isOpen() && flush(directory);
}

bool writeNewFile(const std::string& path, const std::string& text, mode_t mode)
{
    Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!file.isOpen())
        return false;
    if (writeAll(file, text.data(), text.size()) && flush(file) && file.close())
        return true;
    const int error = errno;
    unlink(path.c_str());
    errno = error;
    return false;
}

bool isThere(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

bool isWritable(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return errno == ENOENT;
    if (!(status.st_mode & S_IWUSR)) {
        errno = EACCES;
        return false;
    }
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

} // namespace vfBase::posix
