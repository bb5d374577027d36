// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Export.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vfIsolation {

/// What a task of a helper has to work with. Lives as long as the task.
class VFISOLATION_EXPORT TaskContext
{
public:
    TaskContext(const TaskContext&) = delete;
    TaskContext& operator=(const TaskContext&) = delete;

    /// Returns the argument that the program has sent.
    std::string_view argument() const { return m_argument; }

    /// Returns the descriptors that the program has sent; they are closed behind the task.
    const std::vector<int>& files() const { return m_files; }

    /// Returns the file for the result, in memory. A task may write to it and map it, but must have unmapped it at its end.
    int result() const { return m_result; }

    /// Has the process stay after the task, so that the program can copy from its memory what the result tells the addresses
    /// of; see IsolatedResult::memory.
    /// @return false when the program has not asked for that, or the system does not allow it: the result must have all then
    bool lendMemory();

    /// Appends bytes to the result. @return false when there is no room
    bool append(const void* bytes, std::size_t size);

    /// Tells the program how far the task has come. May be called on any thread of the task.
    void tell(std::uint64_t done, std::uint64_t all);

    /// Tells the program what the task does now, in numbers of its own.
    void tellStage(std::uint32_t stage);

private:
    friend class TaskRunner;
    TaskContext() = default;

    std::string_view m_argument;
    std::vector<int> m_files;
    int m_result = -1;
    struct TaskProgress* m_progress = nullptr;
    bool m_canLendMemory = false;
    bool m_lendsMemory = false;
};

/// The main() of an executable whose functions programs run in processes of their own; see IsolatedJob.
///
///     int main(int argc, char** argv)
///     {
///         vfIsolation::Helper helper;
///         helper.add("count", [](vfIsolation::TaskContext& context) { return count(context); });
///         return helper.run(argc, argv);
///     }
///
/// Each task runs in a process that was executed for it, has one thread, an empty environment and no files but those that the
/// program sends, and is locked down by enterSandbox() before the task begins.
class VFISOLATION_EXPORT Helper
{
public:
    /// @return why the task failed; empty when its result is complete. May throw
    using Task = std::function<std::string(TaskContext& context)>;

    /// Called before the process is locked down, to load what the task needs. Must not open what the argument names.
    using Preparation = std::function<void(std::string_view argument)>;

    /// Registers a task under a name of at most 63 bytes.
    void add(const std::string& name, Task task, Preparation prepare = nullptr);

    /// Called in each process before its task is known, while the program does other work: to load what all tasks need.
    void onStart(std::function<void()> function);

    /// Returns whether a program has started this executable as its helper. An executable may be program and helper in one:
    /// it calls run() then, and before anything else.
    static bool isStartedByProgram(int argc, char** argv);

    /// Does what the program wants. @return the exit status; 1 when the executable was not started by a program
    int run(int argc, char** argv);

private:
    friend class TaskRunner;
    struct Entry
    {
        Task task;
        Preparation prepare;
    };
    std::map<std::string, Entry> m_tasks;
    std::function<void()> m_onStart;
};

} // namespace vfIsolation
