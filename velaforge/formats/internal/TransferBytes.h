// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vfFormats {

/// Texts of a transfer are no longer, and lists of them no larger: longer ones are cut when they are sent, and refused when
/// they arrive.
constexpr std::size_t longestText = 64 * 1024;
constexpr std::size_t mostTexts = 1000;

/// Writes to a file in memory, one thing after another: small ones when there are enough of them.
class VFFORMATS_EXPORT TransferSink
{
public:
    explicit TransferSink(int file) : m_file(file) {}

    TransferSink(const TransferSink&) = delete;
    TransferSink& operator=(const TransferSink&) = delete;

    void put(const void* data, std::size_t size);
    void put(const std::string& text);
    void put(const std::vector<std::string>& texts);

    /// Continues at a multiple of 16 bytes, so that what follows may be taken for numbers of any kind where it lies.
    void align();

    /// Writes what is left. @return whether everything was written
    bool finish();

    /// Returns the number of bytes so far.
    long long offset() const { return m_written + static_cast<long long>(m_waiting.size()); }

private:
    void write(const void* data, std::size_t size);

    int m_file;
    long long m_written = 0;
    std::string m_waiting;
    bool m_isGood = true;
};

/// Reads what a TransferSink wrote. Nothing that its bytes say leads beyond their end.
class VFFORMATS_EXPORT TransferSource
{
public:
    /// @param bytes  at an address that is a multiple of 16; they must live as long
    TransferSource(const void* bytes, std::size_t size)
        : m_size(size), m_data(static_cast<const char*>(bytes))
    {}

    std::uint64_t size() const { return m_size; }

    /// Returns the offset at which something stands that was put at this one or behind it after TransferSink::align().
    static std::uint64_t aligned(std::uint64_t offset);

    /// @return the bytes there; null where the file does not reach that far
    const char* at(std::uint64_t offset, std::uint64_t size) const;

    // Each takes what is at the offset and moves the offset behind it. @return false, with the offset somewhere, when it is
    // not there or larger than is allowed
    bool take(std::uint64_t& offset, void* data, std::size_t size) const;
    bool take(std::uint64_t& offset, std::string& text) const;
    bool take(std::uint64_t& offset, std::vector<std::string>& texts) const;

    /// Takes a list of records whose number comes first.
    template <class Record>
    bool takeRecords(std::uint64_t& offset, std::vector<Record>& records) const
    {
        std::uint64_t count = 0;
        if (!take(offset, &count, sizeof(count)) || count > m_size / sizeof(Record) ||
            !at(offset, count * sizeof(Record)))
            return false;
        records.resize(count);
        return take(offset, records.data(), count * sizeof(Record));
    }

private:
    std::uint64_t m_size;
    const char* m_data;
};

} // namespace vfFormats
