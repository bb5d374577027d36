// SPDX-License-Identifier: MIT
#include <velaforge/isolation/Job.h>

#include <osgDB/Registry>

#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace vfIsolation {

namespace {

/// Counts the threads at work. The program's end waits for them: they use what is destroyed then.
class Workers
{
public:
    static Workers& instance()
    {
        osgDB::Registry::instance(); // which is to be destroyed later
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

} // namespace

/// Outlives the job while its thread is at work.
struct Job::Shared
{
    JobControl control;
    std::mutex mutex;
    std::condition_variable condition;
    bool isDone = false;
    bool isCancelled = false;
    int doneDescriptor = -1;
    std::function<void()> function; ///< called with the mutex held, so that it can be waited for

    ~Shared()
    {
        if (doneDescriptor >= 0)
            close(doneDescriptor);
    }

    void finish(bool isCancelling)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (isDone || (isCancelling && !control.cancel()))
            return;
        isDone = true;
        isCancelled = isCancelling;
        condition.notify_all();
        if (doneDescriptor >= 0)
            eventfd_write(doneDescriptor, 1);
        if (function)
            function();
    }
};

Job::Job(std::string path) : m_path(std::move(path)), m_shared(std::make_shared<Shared>()) {}

Job::~Job()
{
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        m_shared->function = nullptr;
    }
    cancel();
}

void Job::start(Work work)
{
    const std::shared_ptr<const Worker> worker = std::make_shared<Worker>();
    const auto only = std::make_shared<Work>(std::move(work)); // what it holds is not shared with this thread
    const auto body = [worker, shared = m_shared,
                       only] { // the worker is destroyed last: its end is waited for
        try {
            (*only)(shared->control);
        } catch (...) {
            // The work leaves a reason before it does what may throw.
        }
        *only = nullptr; // those who take its result hold it alone
        shared->finish(false);
    };
    try {
        std::thread(body).detach();
    } catch (const std::system_error&) {
        body();
    }
}

void Job::waitForThreads()
{
    Workers::instance().wait();
}

void Job::whenDone(std::function<void()> function)
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    if (m_shared->isDone)
        function();
    else
        m_shared->function = std::move(function);
}

int Job::doneDescriptor()
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    if (m_shared->doneDescriptor < 0)
        m_shared->doneDescriptor = eventfd(m_shared->isDone ? 1 : 0, EFD_CLOEXEC | EFD_NONBLOCK);
    return m_shared->doneDescriptor;
}

bool Job::isDone() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isDone;
}

bool Job::isCancelled() const
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    return m_shared->isCancelled;
}

bool Job::wait(int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_shared->mutex);
    return m_shared->condition.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                        [this] { return m_shared->isDone; });
}

double Job::progress() const
{
    return m_shared->control.progress;
}

void Job::cancel()
{
    m_shared->finish(true);
}

} // namespace vfIsolation
