// SPDX-License-Identifier: MIT
#include <velaforge/base/StandardDescriptors.h>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace vfBase {

bool openStandardDescriptors()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) != -1 || errno != EBADF)
            continue;
        // Opens the lowest free number, which is that of the stream. Programs started from here inherit it.
        const int opened = open("/dev/null", stream == STDIN_FILENO ? O_RDONLY : O_WRONLY);
        if (opened < 0)
            return false;
    }
    return true;
}

} // namespace vfBase
