// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace vfFormats {

/// Watches where this process stands in a file that it reads, and tells that as its progress: libraries that read files say
/// nothing themselves. It has a thread for that, while it lives.
class FilePosition
{
public:
    /// @param path  of the file
    explicit FilePosition(const std::string& path);
    ~FilePosition();

    FilePosition(const FilePosition&) = delete;
    FilePosition& operator=(const FilePosition&) = delete;

private:
    void watch();

    std::uint64_t m_device = 0;
    std::uint64_t m_number = 0; ///< of the file in its file system
    std::uint64_t m_size = 0;
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_isOver = false;
    std::thread m_thread;
};

} // namespace vfFormats
