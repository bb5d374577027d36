// SPDX-License-Identifier: MIT
#include "reading/ReaderHost.h"

#include "reading/ReadProgress.h"
#include "reading/SceneTransfer.h"

#include <velaforge/isolation/Packet.h>
#include <velaforge/isolation/SharedMemory.h>

#include <osgDB/FileNameUtils>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>
#include <utility>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vfViewer {

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned int shortestWork = 30; // seconds
constexpr std::uint64_t bytesPerSecond = std::uint64_t(512) * 1024;
constexpr unsigned int clockFactor = 10;
constexpr std::uint64_t usualMemory = std::uint64_t(2) * 1024 * 1024 * 1024;
constexpr std::uint64_t memoryFactor = 100;

/// A launcher that does not make a process within this time is replaced.
constexpr std::chrono::seconds patienceWithLauncher{60};

/// On which descriptor the launcher finds its socket.
constexpr int launcherDescriptor = 3;

std::uint64_t memoryAllowed(std::uint64_t size)
{
    const long pages = sysconf(_SC_AVPHYS_PAGES);
    const long all = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    // The system drops cached files when memory is needed, so at least half of all memory counts as available.
    const auto available =
        static_cast<std::uint64_t>(std::max(pages, all / 2)) * static_cast<std::uint64_t>(pageSize);
    const std::uint64_t most = available / 4 * 3;
    return size > most / memoryFactor ? most : std::min(most, usualMemory + memoryFactor * size);
}

std::uint64_t sizeOf(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

void closeFile(int& file)
{
    if (file >= 0)
        close(file);
    file = -1;
}

std::string processFile(int process, const char* name)
{
    return "/proc/" + std::to_string(process) + "/" + name;
}

/// Looks at where a process stands in a file that it has open.
class FilePosition
{
public:
    explicit FilePosition(const std::string& path)
    {
        char resolved[PATH_MAX];
        if (realpath(path.c_str(), resolved))
            m_path = resolved;
    }

    /// @return the bytes read so far; 0 when the process has not got it open
    std::uint64_t in(int process) const
    {
        const std::string directory = processFile(process, "fd");
        DIR* files = opendir(directory.c_str());
        std::uint64_t position = 0;
        while (const dirent* entry = files ? readdir(files) : nullptr) {
            char target[PATH_MAX];
            const ssize_t length =
                readlink((directory + "/" + entry->d_name).c_str(), target, sizeof(target));
            if (length > 0 &&
                m_path.compare(0, std::string::npos, target, static_cast<std::size_t>(length)) == 0)
                position = positionOf(process, entry->d_name);
        }
        if (files)
            closedir(files);
        return position;
    }

private:
    static std::uint64_t positionOf(int process, const char* number)
    {
        FILE* file = std::fopen((processFile(process, "fdinfo/") + number).c_str(), "re");
        unsigned long long position = 0;
        if (file) {
            if (std::fscanf(file, "pos: %llu", &position) != 1)
                position = 0;
            std::fclose(file);
        }
        return position;
    }

    std::string m_path;
};

/// @return the seconds that a process has worked
double workedBy(int process)
{
    FILE* file = std::fopen(processFile(process, "stat").c_str(), "re");
    unsigned long user = 0;
    unsigned long system = 0;
    if (file) {
        if (std::fscanf(file, "%*d %*[^)]) %*c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &user,
                        &system) != 2)
            user = system = 0;
        std::fclose(file);
    }
    return static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// How the work is shared out: reading the file, or writing it, takes most of it.
double progressOf(const ReadProgress& told, double ofFile)
{
    switch (told.stage.load()) {
    case ReadProgress::Reading:
        return 0.75 * ofFile;
    case ReadProgress::Preparing:
        return 0.8;
    case ReadProgress::Writing:
        return 0.1 + 0.6 * ofFile;
    default:
        return 0.9;
    }
}

/// The launcher as the program knows it. With the mutex held.
struct Launcher
{
    std::mutex mutex;
    int socket = -1;
    pid_t process = -1;
    unsigned int generation = 0;

    /// Never destroyed: threads may use it while the program ends.
    static Launcher& instance()
    {
        static Launcher& launcher = *new Launcher;
        return launcher;
    }

    /// @return the path of its program: beside this library, wherever the whole was put
    static std::string program()
    {
        Dl_info info{};
        char path[PATH_MAX];
        const auto address = reinterpret_cast<const void*>(&launcherDescriptor);
        if (!dladdr(address, &info) || !info.dli_fname || !realpath(info.dli_fname, path))
            return std::string();
        return osgDB::getFilePath(path) + "/vfviewer-reader";
    }

    void start()
    {
        int pair[2];
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, pair) != 0)
            return;
        const int buffer = static_cast<int>(sizeof(ReaderRequest)) * 4;
        setsockopt(pair[0], SOL_SOCKET, SO_SNDBUF, &buffer, sizeof(buffer));
        process = spawn(pair[1]);
        close(pair[1]);
        if (process > 0)
            socket = pair[0];
        else
            close(pair[0]);
        ++generation;
    }

    /// Ends a launcher that is of no use, and has the system forget it.
    void discard()
    {
        closeFile(socket);
        if (process <= 0)
            return;
        ::kill(process, SIGKILL);
        while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
        process = -1;
    }

private:
    /// Executes the program of the launcher, which inherits nothing but the socket, standard output and standard error.
    static pid_t spawn(int end)
    {
        const std::string path = program();
        posix_spawn_file_actions_t actions;
        posix_spawnattr_t attributes;
        posix_spawn_file_actions_init(&actions);
        posix_spawnattr_init(&attributes);
        posix_spawn_file_actions_adddup2(&actions, end, launcherDescriptor);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions, launcherDescriptor + 1);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes, &none);
        posix_spawnattr_setsigdefault(&attributes, &all);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        std::string name = "vfviewer-reader";
        char* const arguments[] = {name.data(), nullptr};
        pid_t started = -1;
        if (posix_spawn(&started, path.c_str(), &actions, &attributes, arguments, environ) != 0)
            started = -1;
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
        return started;
    }
};

} // namespace

ReadLimits ReadLimits::forSize(std::uint64_t bytes) const
{
    ReadLimits limits = *this;
    if (limits.memory == 0)
        limits.memory = memoryAllowed(bytes);
    if (limits.seconds == 0)
        limits.seconds = shortestWork +
                         static_cast<unsigned int>(std::min<std::uint64_t>(bytes / bytesPerSecond, 1000000));
    if (limits.clockSeconds == 0)
        limits.clockSeconds = clockFactor * limits.seconds;
    return limits;
}

Reader::~Reader()
{
    closeFile(socket);
    kill();
    closeFile(scene);
    closeFile(progress);
    closeFile(m_handle);
}

void Reader::kill() const
{
    if (m_handle >= 0)
        syscall(SYS_pidfd_send_signal, m_handle, SIGKILL, nullptr, 0);
}

void Reader::letGo()
{
    closeFile(socket);
}

std::string Reader::waitFor(vfIsolation::JobControl& control, ReaderDone& done)
{
    const ReadProgress* told = ReadProgress::watch(progress);
    const FilePosition position(path);
    const auto isInTime = [&] {
        if (told) {
            const double fromReader = told->thousandths / 1000.0;
            const double fromFile =
                size > 0 ? static_cast<double>(position.in(process)) / static_cast<double>(size) : 0;
            control.progress =
                static_cast<float>(progressOf(*told, std::clamp(std::max(fromReader, fromFile), 0.0, 1.0)));
        }
        return workedBy(process) <= limits.seconds;
    };
    const vfIsolation::SocketWait waited = vfIsolation::waitForSocket(control, socket, POLLIN, end, isInTime);
    ReadProgress::letGo(told);
    if (waited != vfIsolation::SocketWait::Ready) {
        kill();
        return "it takes too long";
    }
    const bool isTold = vfIsolation::receivePacket(socket, &done, sizeof(done));
    done.reason[sizeof(done.reason) - 1] = 0;
    return isTold && done.size >= 0 ? std::string() : "the file is damaged: its reader fails on it";
}

void ReaderHost::start()
{
    Launcher& launcher = Launcher::instance();
    const std::lock_guard<std::mutex> lock(launcher.mutex);
    if (launcher.socket < 0)
        launcher.start();
}

std::string ReaderHost::begin(ReadKind kind, const std::string& path, const ReadLimits& limits,
                              vfIsolation::JobControl& control, Reader& reader, int sceneFile,
                              long long sceneSize)
{
    reader.path = path;
    reader.size = kind == ReadKind::Write ? static_cast<std::uint64_t>(sceneSize) : sizeOf(path);
    reader.limits = limits.forSize(reader.size);
    reader.end = Clock::now() + std::chrono::seconds(reader.limits.clockSeconds);
    ReaderRequest request;
    request.kind = kind;
    request.memory = reader.limits.memory;
    request.sceneSize = sceneSize;
    if (!putPath(request, path))
        return "its path is too long";
    Answer answer = Answer::Impossible;
    for (int tries = 0; tries < 3; ++tries) {
        closeFile(reader.scene);
        reader.scene =
            sceneFile >= 0 ? fcntl(sceneFile, F_DUPFD_CLOEXEC, 0) : vfIsolation::makeSharedMemory("scene");
        answer = ask(request, control, reader);
        // A launcher that is killed takes the requests that it has got with it; the next one gets them again.
        if (answer != Answer::LauncherLost)
            break;
    }
    switch (answer) {
    case Answer::Started:
        return std::string();
    case Answer::TooLong:
        return "the process that starts readers does not answer";
    case Answer::Cancelled:
        return "it was cancelled";
    default:
        return "the process to read it could not be started";
    }
}

ReaderHost::Answer ReaderHost::ask(const ReaderRequest& request, vfIsolation::JobControl& control,
                                   Reader& reader)
{
    closeFile(reader.socket);
    closeFile(reader.progress);
    int pair[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, pair) != 0)
        return Answer::Impossible;
    reader.socket = pair[0];
    int theirs = pair[1];
    reader.progress = vfIsolation::makeSharedMemory("progress");
    bool isReady = reader.scene >= 0 && reader.progress >= 0 &&
                   ftruncate(reader.progress, progressSize) == 0 && vfIsolation::sealSize(reader.progress);
    const Clock::time_point end = std::min(reader.end, Clock::now() + patienceWithLauncher);
    Launcher& launcher = Launcher::instance();
    unsigned int asked = 0;
    const auto discard = [&] {
        const std::lock_guard<std::mutex> lock(launcher.mutex);
        if (launcher.generation == asked)
            launcher.discard();
    };
    vfIsolation::SocketWait waited = vfIsolation::SocketWait::Ready;
    while (isReady && waited == vfIsolation::SocketWait::Ready) {
        {
            const std::lock_guard<std::mutex> lock(launcher.mutex);
            if (launcher.socket < 0)
                launcher.start();
            asked = launcher.generation;
            if (vfIsolation::sendPacket(launcher.socket, &request, sizeof(request),
                                        {theirs, reader.scene, reader.progress}))
                break;
            isReady = errno == EAGAIN;
            if (errno == EPIPE || errno == ECONNRESET) {
                launcher.discard();
                closeFile(theirs);
                return Answer::LauncherLost;
            }
        }
        // It has not taken the requests before this one: asks again after an interval.
        waited = vfIsolation::waitForSocket(control, -1, 0, Clock::now());
        if (waited == vfIsolation::SocketWait::TooLong && Clock::now() < end)
            waited = vfIsolation::SocketWait::Ready;
    }
    closeFile(theirs);
    if (!isReady)
        return Answer::Impossible;
    if (waited == vfIsolation::SocketWait::Ready)
        waited = vfIsolation::waitForSocket(control, reader.socket, POLLIN, end);
    if (waited == vfIsolation::SocketWait::Cancelled)
        return Answer::Cancelled;
    ReaderStarted started;
    std::vector<int> files;
    if (waited == vfIsolation::SocketWait::TooLong) {
        discard();
        return Answer::TooLong;
    }
    if (!vfIsolation::receivePacket(reader.socket, &started, sizeof(started), files) || files.size() != 1) {
        for (const int file : files)
            close(file);
        discard();
        return Answer::LauncherLost;
    }
    closeFile(reader.m_handle);
    reader.m_handle = files[0];
    reader.process = started.process;
    reader.isReadable = request.kind != ReadKind::Write && canReadMemoryOf(started.process, started.probe);
    ReaderGo go;
    go.isReadable = reader.isReadable;
    // One that is gone already is noticed by those who wait for it.
    vfIsolation::sendPacket(reader.socket, &go, sizeof(go));
    return Answer::Started;
}

} // namespace vfViewer
