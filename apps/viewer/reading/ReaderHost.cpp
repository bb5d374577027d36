// SPDX-License-Identifier: MIT
#include "reading/ReaderHost.h"

#include "reading/FileGate.h"
#include "reading/ModelReader.h"
#include "reading/ReadProgress.h"
#include "reading/SceneTransfer.h"

#include <osgDB/FileNameUtils>
#include <osgDB/Registry>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <exception>
#include <mutex>
#include <new>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VFVIEWER_SANITIZED
#endif

namespace vfViewer {

struct ReaderHost::Request
{
    ReadKind kind = ReadKind::Model;
    std::uint64_t memory = 0;
    char path[PATH_MAX] = {};
};

namespace {

using Request = ReaderHost::Request;

/// What a reader says when it begins and when it is done.
struct Message
{
    std::int32_t process = 0;
    std::int64_t size = 0; ///< of what stands in the memory; 0 at the beginning
};

bool sendWith(int socket, const void* data, std::size_t size, const std::vector<int>& files)
{
    iovec part = {const_cast<void*>(data), size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * 2)] = {};
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
        sent = sendmsg(socket, &message, MSG_NOSIGNAL);
    while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(size);
}

/// @return false when the other side is gone
bool receiveWith(int socket, void* data, std::size_t size, std::vector<int>& files)
{
    iovec part = {data, size};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * 2)] = {};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof(control);
    ssize_t received = 0;
    do
        received = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    while (received < 0 && errno == EINTR);
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); received > 0 && header;
         header = CMSG_NXTHDR(&message, header))
    {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS)
            continue;
        const std::size_t count = (header->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        files.resize(count);
        std::memcpy(files.data(), CMSG_DATA(header), count * sizeof(int));
    }
    return received == static_cast<ssize_t>(size);
}

void limitMemory(std::uint64_t memory)
{
#ifndef VFVIEWER_SANITIZED // which need far more room than memory
    const rlimit limit = {memory, memory};
    setrlimit(RLIMIT_AS, &limit);
#else
    (void)memory;
#endif
}

constexpr const char* lackOfMemory = "it needs more memory than there is";

long long handOverLackOfMemory(int memory)
{
    ReadOutcome outcome;
    outcome.reason = lackOfMemory;
    return HandOver(memory).put(outcome);
}

ReadOutcome readFile(const Request& request)
{
    ReadOutcome outcome;
    try {
        return request.kind == ReadKind::Model ? readModel(request.path) : readImageOnQuad(request.path);
    } catch (const std::bad_alloc&) {
        outcome.reason = lackOfMemory;
    } catch (const std::exception& problem) {
        outcome.reason = problem.what();
    }
    return outcome;
}

/// The process that reads one file.
[[noreturn]] void becomeReader(const Request& request, int socket, int memory)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    signal(SIGCHLD, SIG_DFL);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    Message message;
    message.process = getpid();
    const int handle = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0)); // its header is none for C++
    if (handle < 0 || !sendWith(socket, &message, sizeof(message), {handle}))
        _exit(1);
    close(handle);
    limitMemory(request.memory);
    ReadProgress::share(memory);
    ReadOutcome outcome = readFile(request);
    ReadProgress::tell(ReadProgress::Sending);
    HandOver handOver(memory);
    try {
        message.size = handOver.put(outcome);
    } catch (const std::bad_alloc&) {
    }
    if (message.size == 0)
        message.size = handOverLackOfMemory(memory);
    // Whoever asked looks into this process until it closes the socket, or may not and says so.
    sendWith(socket, &message, sizeof(message), {});
    char said = 0;
    std::vector<int> files;
    if (receiveWith(socket, &said, sizeof(said), files)) {
        if (!handOver.putArrays())
            message.size = handOverLackOfMemory(memory);
        sendWith(socket, &message, sizeof(message), {});
    }
    _exit(0);
}

/// Loads what reads a format, so that it need not be loaded for the next file of its kind.
void loadReader(const std::string& path)
{
    if (FileGate::isModel(path) || FileGate::isImage(path))
        osgDB::Registry::instance()->getReaderWriterForExtension(osgDB::getLowerCaseFileExtension(path));
}

/// The process that makes the readers. It ends when the program does.
[[noreturn]] void becomeHost(int socket)
{
    prctl(PR_SET_NAME, "vfviewer-reader");
    signal(SIGCHLD, SIG_IGN); // nobody waits for the readers
    signal(SIGINT, SIG_IGN);  // a key at the terminal is for the program
    signal(SIGTERM, SIG_DFL);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    FileGate::install();
    loadSceneFormat();
    Request request;
    std::vector<int> files;
    while (receiveWith(socket, &request, sizeof(request), files)) {
        if (files.size() == 2) {
            if (fork() == 0) {
                close(socket);
                becomeReader(request, files[0], files[1]);
            }
        }
        for (const int file : files)
            close(file);
        files.clear();
        loadReader(request.path);
    }
    _exit(0);
}

std::mutex& hostMutex()
{
    static std::mutex mutex;
    return mutex;
}

int& hostSocket()
{
    static int socket = -1;
    return socket;
}

/// With the mutex held.
void startHost()
{
    int pair[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, pair) != 0)
        return;
    const int buffer = sizeof(Request) * 4;
    setsockopt(pair[0], SOL_SOCKET, SO_SNDBUF, &buffer, sizeof(buffer));
    const pid_t process = fork();
    if (process == 0) {
        close(pair[0]);
        becomeHost(pair[1]);
    }
    close(pair[1]);
    if (process < 0)
        close(pair[0]);
    else
        hostSocket() = pair[0];
}

std::uint64_t memoryAllowed(const std::string& path)
{
    const long pages = sysconf(_SC_AVPHYS_PAGES);
    const long all = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    // What the system holds of files it lets go when somebody needs room: half of all memory is there at least.
    const auto available =
        static_cast<std::uint64_t>(std::max(pages, all / 2)) * static_cast<std::uint64_t>(pageSize);
    struct stat status;
    const std::uint64_t size =
        stat(path.c_str(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
    return std::min<std::uint64_t>(available / 4 * 3, 2ull * 1024 * 1024 * 1024 + 100 * size);
}

void closeFile(int& file)
{
    if (file >= 0)
        close(file);
    file = -1;
}

} // namespace

Reader::~Reader()
{
    closeFile(memory);
    closeFile(socket);
    closeFile(m_handle);
}

void Reader::kill() const
{
    if (m_handle >= 0)
        syscall(SYS_pidfd_send_signal, m_handle, SIGKILL, nullptr, 0);
}

void ReaderHost::start()
{
    const std::lock_guard<std::mutex> lock(hostMutex());
    if (hostSocket() < 0)
        startHost();
}

bool ReaderHost::read(ReadKind kind, const std::string& path, const ReadLimits& limits, Reader& reader)
{
    Request request;
    request.kind = kind;
    request.memory = limits.memory > 0 ? limits.memory : memoryAllowed(path);
    if (path.size() >= sizeof(request.path))
        return false;
    path.copy(request.path, path.size());
    // A process that somebody ends may take a request with it to its grave. The next one finds its socket closed.
    for (int tries = 0; tries < 3; ++tries) {
        if (ask(request, reader))
            return true;
    }
    return false;
}

bool ReaderHost::ask(const Request& request, Reader& reader)
{
    closeFile(reader.socket);
    closeFile(reader.memory);
    int pair[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, pair) != 0)
        return false;
    reader.socket = pair[0];
    reader.memory = memfd_create("scene", MFD_CLOEXEC);
    bool isSent = reader.memory >= 0 && ftruncate(reader.memory, transferHeaderSize) == 0;
    if (isSent) {
        const std::lock_guard<std::mutex> lock(hostMutex());
        if (hostSocket() < 0)
            startHost();
        isSent =
            hostSocket() >= 0 && sendWith(hostSocket(), &request, sizeof(request), {pair[1], reader.memory});
        if (!isSent)
            closeFile(hostSocket()); // it was ended by somebody
    }
    close(pair[1]);
    Message message;
    std::vector<int> files;
    if (!isSent || !receiveWith(reader.socket, &message, sizeof(message), files) || files.size() != 1)
        return false;
    reader.m_handle = files[0];
    reader.process = message.process;
    return true;
}

void Reader::letGo()
{
    closeFile(socket);
}

bool Reader::askForArrays() const
{
    const char request = 1;
    return sendWith(socket, &request, sizeof(request), {});
}

long long Reader::takeSize() const
{
    Message message;
    std::vector<int> files;
    return receiveWith(socket, &message, sizeof(message), files) ? message.size : 0;
}

} // namespace vfViewer
