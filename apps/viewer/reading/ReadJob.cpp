// SPDX-License-Identifier: MIT
#include "reading/ReadJob.h"

#include "reading/Mirrored.h"
#include "reading/ReadProgress.h"
#include "reading/SceneTransfer.h"
#include "reading/SideBySide.h"

#include <osg/Geometry>
#include <osg/NodeVisitor>
#include <osgDB/Registry>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace {

constexpr int pollMilliseconds = 50;
constexpr unsigned int shortestLimit = 30; // seconds
constexpr std::uint64_t bytesPerSecond = std::uint64_t(512) * 1024;

std::uint64_t sizeOf(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

/// @return the path that another process knows the file by
std::string absolute(const std::string& path)
{
    if (path.empty() || path[0] == '/')
        return path;
    char directory[PATH_MAX];
    return getcwd(directory, sizeof(directory)) ? std::string(directory) + "/" + path : path;
}

std::string whatProcessFile(int process, const char* name)
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
        const std::string directory = whatProcessFile(process, "fd");
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
        FILE* file = std::fopen((whatProcessFile(process, "fdinfo/") + number).c_str(), "re");
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
    FILE* file = std::fopen(whatProcessFile(process, "stat").c_str(), "re");
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

/// Counts the threads at work. The program's end waits for them: they use what goes with it.
class Workers
{
public:
    static Workers& instance()
    {
        osgDB::Registry::instance(); // which is to go later
        static Workers workers;
        return workers;
    }
    ~Workers() { wait(); }
    void wait()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait(lock, [this] { return m_count == 0; });
    }
    void add(int count)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_count += count;
        m_condition.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    int m_count = 0;
};

/// One of them, for as long as it lives.
struct Worker
{
    Worker() { Workers::instance().add(1); }
    ~Worker() { Workers::instance().add(-1); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
};

/// How the work is shared out: reading the file takes most of it.
double progressOf(const ReadProgress& told, double ofFile)
{
    switch (told.stage.load()) {
    case ReadProgress::Reading:
        return 0.75 * ofFile;
    case ReadProgress::Preparing:
        return 0.8;
    default:
        return 0.9;
    }
}

} // namespace

/// Outlives the job while its thread is at work.
struct ReadJob::Shared
{
    Shared() : wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~Shared() { close(wakeUp); }

    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;

    const int wakeUp; ///< readable when the job is cancelled
    std::atomic<bool> isCancelled{false};
    std::atomic<float> progress{-1};

    std::mutex mutex;
    std::condition_variable condition;
    bool isDone = false;
    ReadOutcome outcome;
    std::function<void()>
        function; ///< called with the mutex held, so that whoever set it can wait for its end

    /// Takes the result. @return false when it was done already
    bool finish(ReadOutcome& result)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (isDone)
            return false;
        isDone = true;
        std::swap(outcome, result);
        result = ReadOutcome(); // whoever takes the outcome holds the scene alone
        condition.notify_all();
        if (function)
            function();
        return true;
    }
};

namespace {

/// Waits for a reader. @return the size of what it handed on; 0 with a reason when there is nothing
template <class Shared>
long long await(Shared& shared, const Reader& reader, const std::string& path, unsigned int seconds,
                std::string& reason)
{
    const ReadProgress* told = ReadProgress::watch(reader.memory);
    const FilePosition position(path);
    const std::uint64_t size = sizeOf(path);
    pollfd waited[] = {{reader.socket, POLLIN, 0}, {shared.wakeUp, POLLIN, 0}};
    bool isOver = false;
    while (poll(waited, 2, pollMilliseconds) == 0 && !isOver) {
        if (told) {
            const double fromReader = told->thousandths / 1000.0;
            const double fromFile =
                size > 0 ? static_cast<double>(position.in(reader.process)) / static_cast<double>(size) : 0;
            shared.progress = static_cast<float>(progressOf(*told, std::max(fromReader, fromFile)));
        }
        isOver = workedBy(reader.process) > seconds;
    }
    ReadProgress::letGo(told);
    if (isOver || shared.isCancelled) {
        reader.kill();
        reason = "reading it takes too long";
        return 0;
    }
    const long long handedOn = reader.takeSize();
    if (handedOn == 0)
        reason = "the file is damaged: its reader fails on it";
    return handedOn;
}

/// Prepares what is drawn. The driver is to keep the points by themselves, which is the fast way; lists of drawing
/// commands copy each point several times before anything is seen.
class PrepareDrawables : public osg::NodeVisitor
{
public:
    PrepareDrawables() : NodeVisitor(TRAVERSE_ALL_CHILDREN) { setNodeMaskOverride(~0u); }

    void apply(osg::Drawable& drawable) override
    {
        drawable.setUseDisplayList(false);
        drawable.setUseVertexBufferObjects(true);
        drawable.setDrawCallback(mirrorCallback());
    }

    void apply(osg::Geometry& geometry) override
    {
        apply(static_cast<osg::Drawable&>(geometry));
        if (auto* found = dynamic_cast<osg::Vec3Array*>(geometry.getVertexArray()))
            points.insert(found);
    }

    std::set<osg::ref_ptr<osg::Vec3Array>> points;
};

/// @param process  the one that has the arrays, 0 when they are in the reader's memory
ReadOutcome readWith(std::atomic<bool>& isCancelled, Reader& reader, long long size, int process)
{
    ReadOutcome outcome = receiveOutcome(reader.memory, size, process, isCancelled);
    reader.letGo();
    if (outcome.scene) {
        // What can be done before it is shown is done here, and not on the thread that shows it.
        PrepareDrawables prepare;
        outcome.scene->accept(prepare);
        const auto bounds = std::async(sideBySide, [&outcome] { outcome.scene->getBound(); });
        for (const osg::ref_ptr<osg::Vec3Array>& points : prepare.points)
            outcome.outlines.emplace_back(points,
                                          workOutOutline(*points)); // which the first look at it needs
        bounds.wait();
    }
    return outcome;
}

} // namespace

void ReadJob::work(const std::shared_ptr<Shared>& shared, ReadKind kind, const std::string& path,
                   const ReadLimits& limits)
{
    ReadOutcome outcome;
    const std::string file = absolute(path);
    Reader reader;
    if (ReaderHost::read(kind, file, limits, reader)) {
        const unsigned int seconds =
            limits.seconds > 0 ? limits.seconds
                               : shortestLimit + static_cast<unsigned int>(sizeOf(file) / bytesPerSecond);
        loadSceneFormat(); // while there is nothing to do but wait
        long long size = await(*shared, reader, file, seconds, outcome.reason);
        const int process = canLookInto(reader.process) ? reader.process : 0;
        if (size > 0 && process == 0) {
            outcome.reason = notHandedOn;
            size = reader.askForArrays() ? await(*shared, reader, file, seconds, outcome.reason) : 0;
        }
        if (size > 0)
            outcome = readWith(shared->isCancelled, reader, size, process);
    } else {
        outcome.reason = "the process to read it could not be started";
    }
    shared->finish(outcome);
}

ReadJob::ReadJob(ReadKind kind, const std::string& path, const ReadLimits& limits)
    : m_path(path), m_shared(std::make_shared<Shared>())
{
    ReaderHost::start();
    const std::shared_ptr<const Worker> worker = std::make_shared<Worker>();
    try {
        std::thread([shared = m_shared, worker, kind, path, limits] {
            work(shared, kind, path, limits);
        }).detach();
    } catch (const std::system_error&) {
        work(m_shared, kind, path, limits);
    }
}

ReadJob::~ReadJob()
{
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        m_shared->function = nullptr;
    }
    cancel();
}

void ReadJob::waitForThreads()
{
    Workers::instance().wait();
}

void ReadJob::whenDone(std::function<void()> function)
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    if (m_shared->isDone)
        function();
    else
        m_shared->function = std::move(function);
}

bool ReadJob::isDone() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isDone;
}

bool ReadJob::isCancelled() const
{
    return m_shared->isCancelled;
}

bool ReadJob::wait(int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    return m_shared->condition.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                        [this] { return m_shared->isDone; });
}

double ReadJob::progress() const
{
    return m_shared->progress;
}

void ReadJob::cancel()
{
    ReadOutcome outcome;
    outcome.isCancelled = true;
    if (!m_shared->finish(outcome))
        return;
    m_shared->isCancelled = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_shared->wakeUp, &one, sizeof(one));
}

ReadOutcome ReadJob::take()
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return std::exchange(m_shared->outcome, ReadOutcome());
}

} // namespace vfViewer
