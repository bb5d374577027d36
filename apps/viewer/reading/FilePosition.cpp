// SPDX-License-Identifier: MIT
#include "reading/FilePosition.h"

#include "reading/ReadProgress.h"

#include <algorithm>
#include <chrono>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace {

constexpr std::chrono::milliseconds interval{100};

/// A file that is read in a moment needs nobody to watch.
constexpr std::uint64_t worthWatching = std::uint64_t(1024) * 1024;

constexpr int mostDescriptors = 64;

} // namespace

FilePosition::FilePosition(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0 || static_cast<std::uint64_t>(status.st_size) < worthWatching)
        return;
    m_device = status.st_dev;
    m_number = status.st_ino;
    m_size = static_cast<std::uint64_t>(status.st_size);
    try {
        m_thread = std::thread([this] { watch(); });
    } catch (const std::system_error&) {
        // It is read without.
    }
}

FilePosition::~FilePosition()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOver = true;
    }
    m_condition.notify_one();
    m_thread.join();
}

void FilePosition::watch()
{
    std::uint64_t furthest = 0;
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_condition.wait_for(lock, interval, [this] { return m_isOver; })) {
        for (int file = 0; file < mostDescriptors; ++file) {
            struct stat status;
            if (fstat(file, &status) != 0 || status.st_dev != m_device || status.st_ino != m_number)
                continue;
            const off_t position = lseek(file, 0, SEEK_CUR);
            furthest = std::max(furthest, static_cast<std::uint64_t>(std::max<off_t>(position, 0)));
        }
        if (furthest > 0)
            ReadProgress::tell(furthest, m_size);
    }
}

} // namespace vfViewer
