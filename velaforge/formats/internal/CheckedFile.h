// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/formats/Export.h>

#include <streambuf>
#include <string>
#include <vector>

namespace vfFormats {

/// Writes to a file and remembers the first error. Writers may use it as the buffer of a std::ostream, which they need not
/// ask.
///
///     CheckedFile file(descriptor);
///     std::ostream stream(&file);
///     writer->writeNode(*scene, stream, nullptr);
///     std::string reason = file.finish();
class VFFORMATS_EXPORT CheckedFile : public std::streambuf
{
public:
    /// @param file  open for writing; stays the caller's
    explicit CheckedFile(int file);

    CheckedFile(const CheckedFile&) = delete;
    CheckedFile& operator=(const CheckedFile&) = delete;

    void write(const char* text, std::size_t size) { sputn(text, static_cast<std::streamsize>(size)); }
    void write(const std::string& text) { write(text.data(), text.size()); }

    /// Writes a number with as many digits as it needs to be read as the same one.
    void write(float number);
    void write(std::size_t number);

    /// Returns whether nothing has failed so far.
    bool isGood() const { return m_error == 0; }

    /// Writes what is left, to the disk. @return why it is not whole; empty when it is
    std::string finish();

protected:
    int_type overflow(int_type character) override;
    int sync() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode mode) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode mode) override;

private:
    void note();

    std::vector<char> m_buffer;
    int m_file;
    int m_error = 0;
};

} // namespace vfFormats
