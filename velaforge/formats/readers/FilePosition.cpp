// SPDX-License-Identifier: MIT
#include <velaforge/formats/readers/FilePosition.h>

#include <velaforge/formats/readers/ReadProgress.h>

#include <algorithm>
#include <chrono>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfFormats {

namespace {

constexpr std::chrono::milliseconds interval{100};

/// Smaller files are read too fast for progress to be seen.
constexpr std::uint64_t worthWatching = std::uint64_t(1024) * 1024;

constexpr int mostDescriptors = 64;

std::uint64_t deviceOf(const struct statx& status)
{
    return std::uint64_t(status.stx_dev_major) << 32 | status.stx_dev_minor;
}

} // namespace

FilePosition::FilePosition(const std::string& path)
{
    struct statx status = {};
    if (statx(AT_FDCWD, path.c_str(), 0, STATX_INO | STATX_SIZE, &status) != 0 ||
        status.stx_size < worthWatching)
        return;
    m_device = deviceOf(status);
    m_number = status.stx_ino;
    m_size = status.stx_size;
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
    // Each descriptor may be closed meanwhile, and be that of another file: asking about one changes nothing.
    while (!m_condition.wait_for(lock, interval, [this] { return m_isOver; })) {
        for (int file = 0; file < mostDescriptors; ++file) {
            struct statx status = {};
            if (statx(file, "", AT_EMPTY_PATH, STATX_INO, &status) != 0 || deviceOf(status) != m_device ||
                status.stx_ino != m_number)
                continue;
            const off_t position = lseek(file, 0, SEEK_CUR);
            furthest = std::max(furthest, static_cast<std::uint64_t>(std::max<off_t>(position, 0)));
        }
        if (furthest > 0)
            ReadProgress::tell(furthest, m_size);
    }
}

} // namespace vfFormats
