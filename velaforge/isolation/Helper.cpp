// SPDX-License-Identifier: MIT
#include <velaforge/isolation/Helper.h>

#include <velaforge/isolation/internal/Descriptors.h>
#include <velaforge/isolation/internal/Protocol.h>
#include <velaforge/isolation/internal/TaskRunner.h>

#include <velaforge/base/StandardDescriptors.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <sys/prctl.h>
#include <sys/socket.h>

namespace vfIsolation {

bool TaskContext::lendMemory()
{
    m_lendsMemory = m_canLendMemory;
    return m_lendsMemory;
}

bool TaskContext::append(const void* bytes, std::size_t size)
{
    return writeAll(m_result, bytes, size);
}

void TaskContext::tell(std::uint64_t done, std::uint64_t all)
{
    if (m_progress && all > 0)
        m_progress->millionths = static_cast<std::uint32_t>(static_cast<double>(std::min(done, all)) /
                                                            static_cast<double>(all) * 1e6);
}

void TaskContext::tellStage(std::uint32_t stage)
{
    if (m_progress)
        m_progress->stage = stage;
}

void Helper::add(const std::string& name, Task task, Preparation prepare)
{
    m_tasks[name] = {std::move(task), std::move(prepare)};
}

void Helper::onStart(std::function<void()> function)
{
    m_onStart = std::move(function);
}

bool Helper::isStartedByProgram(int argc, char** argv)
{
    int kind = 0;
    socklen_t size = sizeof(kind);
    return argc == 2 && !std::strcmp(argv[1], serveArgument) &&
           getsockopt(helperSocket, SOL_SOCKET, SO_TYPE, &kind, &size) == 0 && kind == SOCK_SEQPACKET;
}

int Helper::run(int argc, char** argv)
{
    vfBase::openStandardDescriptors();
    if (!isStartedByProgram(argc, argv))
        return EXIT_FAILURE;
    prctl(PR_SET_NAME, "vf-helper"); // until it has a task
    if (m_onStart)
        m_onStart();
    TaskRunner(*this).run();
}

} // namespace vfIsolation
