// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/isolation/Helper.h>
#include <velaforge/isolation/internal/Protocol.h>

namespace vfIsolation {

/// The process that does one task.
class TaskRunner
{
public:
    explicit TaskRunner(const Helper& helper) : m_helper(helper) {}

    /// Waits for a task, does it, and ends the process.
    [[noreturn]] void run();

private:
    void take(const TaskRequest& request, const std::vector<int>& files, TaskDone& done);
    void work(const Helper::Entry& entry, TaskDone& done);

    const Helper& m_helper;
    TaskContext m_context;
};

} // namespace vfIsolation
