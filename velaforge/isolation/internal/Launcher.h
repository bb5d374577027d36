// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/JobControl.h>

#include <chrono>
#include <mutex>
#include <string>

#include <sys/types.h>

namespace vfIsolation {

/// A process that was started for a task. It is ended with the object.
class HelperProcess
{
public:
    HelperProcess() = default;
    ~HelperProcess();

    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    int socket = -1;
    int handle = -1; ///< a descriptor of the process, which is readable when it has ended
    pid_t process = 0;

    /// Returns whether the system lets this process read the memory of that one.
    bool isMemoryReadable() const;
};

enum class LaunchResult
{
    Started,
    Cancelled,
    NoHelper, ///< the executable could not be started
    TooLong,
    Impossible ///< for want of descriptors or memory
};

/// The launcher of a helper executable, as the program knows it. It is started when it is needed, and replaced when it was
/// killed or does not answer.
class Launcher
{
public:
    /// Returns the launcher of an executable, which lives as long as this process.
    /// @param helper  the absolute path of the executable
    static Launcher& of(const std::string& helper);

    /// Starts the launcher, unless it runs.
    void start();

    /// Starts a helper process. May be called on any thread.
    /// @param end  until when it waits
    LaunchResult launch(JobControl& control, HelperProcess& process,
                        std::chrono::steady_clock::time_point end);

private:
    enum class Answer
    {
        Started,
        LauncherLost,
        Cancelled,
        TooLong,
        Impossible
    };

    explicit Launcher(std::string helper);
    void startLocked();
    void discardLocked();
    Answer ask(JobControl& control, HelperProcess& process, std::chrono::steady_clock::time_point end);
    Answer send(JobControl& control, int theirs, unsigned int& generation,
                std::chrono::steady_clock::time_point end);
    void discard(unsigned int generation);

    const std::string m_helper;
    std::mutex m_mutex; ///< for what is below
    int m_socket = -1;
    pid_t m_process = -1;
    unsigned int m_generation = 0;
};

} // namespace vfIsolation
