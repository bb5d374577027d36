// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace vfIsolation {

// The packets between the program, the launcher and the helper processes:
//
//   program -> launcher   LaunchRequest, with one end of the job's socket
//   launcher -> helper    LaunchRequest, with that end
//   launcher -> program   HelperStarted, with a descriptor of the process, through the job's socket
//   program -> helper     TaskRequest, with the files of the task, through the job's socket
//   helper -> program     TaskDone
//
// The program ends the process when it has the answer, and has taken what the process lends it. Only TaskDone, the result and the progress come from a process that
// has seen a file.

/// On which descriptor a helper executable finds its socket.
constexpr int helperSocket = 3;

/// The argument of a helper executable.
constexpr const char* serveArgument = "--serve";

struct LaunchRequest
{
    std::uint8_t unused = 0;
};

struct HelperStarted
{
    bool isStarted =
        false; ///< false, without a descriptor, when the system has no process or descriptor to give
    std::int32_t process = 0; ///< its id, which is its own for as long as the descriptor is open
};

/// The descriptors that come with a TaskRequest, in this order, and behind them those of the task.
enum TaskFile : std::uint8_t
{
    NamesFile, ///< the readable files, each name terminated by a zero byte
    ArgumentFile,
    ResultFile,
    ProgressFile,
    FirstOwnFile
};

struct TaskRequest
{
    char build[64] = {}; ///< of this library; see buildId()
    char task[64] = {};
    std::uint64_t namesSize = 0;
    std::uint64_t argumentSize = 0;
    std::uint64_t memory = 0;
    std::uint64_t resultSize = 0;
    std::uint32_t seconds = 0;
    std::uint32_t files = 0;
    std::uint8_t layers = 0; ///< SandboxLayers
    bool requiresSandbox = false;
    bool isMemoryReadable = false; ///< the program may read the memory of the process
};

enum class TaskOutcome : std::uint8_t
{
    Done,
    Failed, ///< by the reason of the task
    OutOfMemory,
    TooLong, ///< the limit of processor time
    NoSuchTask,
    OtherBuild,
    NoSandbox
};

struct TaskDone
{
    std::uint64_t size = 0; ///< of the result
    TaskOutcome outcome = TaskOutcome::Failed;
    std::uint8_t lendsMemory = 0; ///< not 0: the process stays, for its memory to be read
    char reason[512] = {};        ///< terminated by a zero byte
    char missing[128] = {}; ///< parts of the sandbox that the system does not have, terminated by a zero byte
};

/// In memory that the helper writes and the program reads.
struct TaskProgress
{
    std::atomic<std::uint32_t> isBegun{0}; ///< the helper has the task
    std::atomic<std::uint32_t> millionths{0};
    std::atomic<std::uint32_t> stage{0};
};

constexpr std::size_t progressSize = 4096;

/// Copies a text into a field of a packet. @return false when it is too long
template <std::size_t size>
bool putText(char (&field)[size], const std::string& text)
{
    if (text.size() >= size)
        return false;
    field[text.copy(field, size - 1)] = 0;
    return true;
}

/// Returns what tells this build of the library from others, so that a program does not talk to a helper of another one.
const std::string& buildId();

} // namespace vfIsolation
