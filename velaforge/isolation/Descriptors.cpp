// SPDX-License-Identifier: MIT
#include <velaforge/isolation/internal/Descriptors.h>

#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

namespace vfIsolation {

void closeFile(int& file)
{
    if (file >= 0)
        close(file);
    file = -1;
}

bool makeSocketPair(int& ours, int& theirs)
{
    int pair[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, pair) != 0)
        return false;
    ours = pair[0];
    theirs = pair[1];
    return true;
}

bool writeAll(int file, const void* bytes, std::size_t size)
{
    const auto* at = static_cast<const char*>(bytes);
    while (size > 0) {
        const ssize_t written = write(file, at, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        at += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace vfIsolation
