// SPDX-License-Identifier: MIT
#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vfViewer {

// What the program, the launcher and the processes that it makes say to one another, a packet each:
//
//   program -> launcher   ReaderRequest, with the job's socket, the file for its scene and that for its progress
//   launcher -> program   ReaderStarted, with a descriptor of the process, through the job's socket
//   program -> process    ReaderGo
//   process -> program    ReaderDone
//
// The process ends when the program closes the job's socket.

enum class ReadKind : std::uint8_t
{
    Model,
    Image,
    Write ///< the scene that comes with the request, to a file
};

struct ReaderRequest
{
    ReadKind kind = ReadKind::Model;
    std::uint64_t memory = 0;   ///< bytes that the process may use
    std::int64_t sceneSize = 0; ///< of the scene that is to be written
    char path[PATH_MAX] = {};
};

struct ReaderStarted
{
    std::int32_t process = 0;
    std::uint64_t probe = 0; ///< see canReadMemoryOf()
};

struct ReaderGo
{
    bool isReadable = false; ///< the program may read the memory of the process
};

struct ReaderDone
{
    std::int64_t size = 0; ///< of the scene; 0 when there is none
    char reason[512] = {}; ///< why it could not be written, terminated by a zero byte
};

constexpr std::size_t progressSize = 4096;

/// Copies a path into a request. @return false when it is too long
bool putPath(ReaderRequest& request, const std::string& path);

} // namespace vfViewer
