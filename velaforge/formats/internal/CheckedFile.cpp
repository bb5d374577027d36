// SPDX-License-Identifier: MIT
#include <velaforge/formats/internal/CheckedFile.h>

#include <cerrno>
#include <charconv>
#include <cstring>

#include <unistd.h>

namespace vfFormats {

namespace {

constexpr std::size_t bufferSize = std::size_t(256) * 1024;

} // namespace

CheckedFile::CheckedFile(int file) : m_buffer(bufferSize), m_file(file)
{
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
}

void CheckedFile::note()
{
    if (m_error == 0)
        m_error = errno != 0 ? errno : EIO;
}

void CheckedFile::write(float number)
{
    char text[32];
    const std::to_chars_result end = std::to_chars(text, text + sizeof(text), number);
    write(text, static_cast<std::size_t>(end.ptr - text));
}

void CheckedFile::write(std::size_t number)
{
    char text[32];
    const std::to_chars_result end = std::to_chars(text, text + sizeof(text), number);
    write(text, static_cast<std::size_t>(end.ptr - text));
}

int CheckedFile::sync()
{
    const char* bytes = pbase();
    while (m_error == 0 && bytes < pptr()) {
        const ssize_t written = ::write(m_file, bytes, static_cast<std::size_t>(pptr() - bytes));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            note();
        else
            bytes += written;
    }
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    return m_error == 0 ? 0 : -1;
}

CheckedFile::int_type CheckedFile::overflow(int_type character)
{
    sync(); // after an error, too, so that the writer comes to its end
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

CheckedFile::pos_type CheckedFile::seekoff(off_type offset, std::ios_base::seekdir direction,
                                           std::ios_base::openmode)
{
    sync();
    const int from = direction == std::ios_base::beg   ? SEEK_SET
                     : direction == std::ios_base::cur ? SEEK_CUR
                                                       : SEEK_END;
    const off_t position = lseek(m_file, offset, from);
    if (position < 0)
        note();
    return pos_type(position);
}

CheckedFile::pos_type CheckedFile::seekpos(pos_type position, std::ios_base::openmode mode)
{
    return seekoff(off_type(position), std::ios_base::beg, mode);
}

std::string CheckedFile::finish()
{
    sync();
    if (fsync(m_file) != 0 && errno != EINVAL && errno != ENOTSUP)
        note();
    return m_error == 0 ? std::string() : std::strerror(m_error);
}

} // namespace vfFormats
