// SPDX-License-Identifier: MIT
#include <velaforge/isolation/Packet.h>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

constexpr std::size_t mostFiles = 8;

void closeAll(std::vector<int>& files)
{
    for (const int file : files)
        close(file);
    files.clear();
}

} // namespace

bool sendPacket(int socket, const void* data, std::size_t size, const std::vector<int>& files)
{
    if (files.size() > mostFiles) {
        errno = EINVAL;
        return false;
    }
    iovec part = {const_cast<void*>(data), size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * mostFiles)] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (!files.empty()) {
        message.msg_control = control;
        message.msg_controllen = CMSG_SPACE(sizeof(int) * files.size());
        cmsghdr* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int) * files.size());
        std::memcpy(CMSG_DATA(header), files.data(), sizeof(int) * files.size());
    }
    ssize_t sent = 0;
    do
        sent = sendmsg(socket, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(size);
}

bool receivePacket(int socket, void* data, std::size_t size, std::vector<int>& files)
{
    files.clear();
    iovec part = {data, size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * mostFiles)] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof(control);
    ssize_t received = 0;
    do
        received = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    while (received < 0 && errno == EINTR);
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); received >= 0 && header;
         header = CMSG_NXTHDR(&message, header))
    {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS)
            continue;
        const std::size_t count = (header->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        const std::size_t before = files.size();
        files.resize(before + count);
        std::memcpy(files.data() + before, CMSG_DATA(header), count * sizeof(int));
    }
    if (received == static_cast<ssize_t>(size) && !(message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)))
        return true;
    closeAll(files);
    return false;
}

bool receivePacket(int socket, void* data, std::size_t size)
{
    std::vector<int> files;
    const bool isReceived = receivePacket(socket, data, size, files);
    closeAll(files);
    return isReceived;
}

} // namespace vfIsolation
