// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/TransferBytes.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace vfFormats {

namespace {

constexpr std::uint64_t alignment = 16;

/// So many bytes are worth a system call.
constexpr std::size_t worthWriting = std::size_t(256) * 1024;

bool writeAt(int file, const void* data, std::size_t size, long long offset)
{
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t written = pwrite(file, bytes, size, offset);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
        offset += written;
    }
    return true;
}

} // namespace

void TransferSink::put(const void* data, std::size_t size)
{
    if (m_waiting.size() + size < worthWriting) {
        m_waiting.append(static_cast<const char*>(data), size);
        return;
    }
    finish();
    write(data, size);
}

bool TransferSink::finish()
{
    write(m_waiting.data(), m_waiting.size());
    m_waiting.clear();
    return m_isGood;
}

void TransferSink::write(const void* data, std::size_t size)
{
    m_isGood = m_isGood && writeAt(m_file, data, size, m_written);
    m_written += static_cast<long long>(size);
}

void TransferSink::put(const std::string& text)
{
    const std::uint64_t size = std::min(text.size(), longestText);
    put(&size, sizeof(size));
    put(text.data(), size);
}

void TransferSink::put(const std::vector<std::string>& texts)
{
    const std::uint64_t count = std::min(texts.size(), mostTexts);
    put(&count, sizeof(count));
    for (std::size_t i = 0; i < count; ++i)
        put(texts[i]);
}

void TransferSink::align()
{
    const auto end = static_cast<std::uint64_t>(offset());
    m_waiting.append(TransferSource::aligned(end) - end, '\0');
}

std::uint64_t TransferSource::aligned(std::uint64_t offset)
{
    return offset > ~alignment ? offset : (offset + alignment - 1) / alignment * alignment;
}

const char* TransferSource::at(std::uint64_t offset, std::uint64_t size) const
{
    return m_data && offset <= m_size && size <= m_size - offset ? m_data + offset : nullptr;
}

bool TransferSource::take(std::uint64_t& offset, void* data, std::size_t size) const
{
    const char* bytes = at(offset, size);
    if (!bytes)
        return false;
    if (size > 0)
        std::memcpy(data, bytes, size);
    offset += size;
    return true;
}

bool TransferSource::take(std::uint64_t& offset, std::string& text) const
{
    std::uint64_t size = 0;
    if (!take(offset, &size, sizeof(size)) || size > longestText)
        return false;
    const char* bytes = at(offset, size);
    if (!bytes)
        return false;
    text.assign(bytes, size);
    offset += size;
    return true;
}

bool TransferSource::take(std::uint64_t& offset, std::vector<std::string>& texts) const
{
    std::uint64_t count = 0;
    if (!take(offset, &count, sizeof(count)) || count > mostTexts)
        return false;
    for (std::uint64_t i = 0; i < count; ++i) {
        std::string text;
        if (!take(offset, text))
            return false;
        texts.push_back(std::move(text));
    }
    return true;
}

} // namespace vfFormats
