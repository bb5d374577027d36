// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <string>

#include <sys/types.h>

/// Functions for writing files with POSIX calls, each result checked. A function that fails leaves the reason
/// in errno.
namespace vfBase::posix {

/// Returns the text for errno.
std::string systemReason();

/// Returns the directory of a path; "." if it has none.
std::string directoryOf(const std::string& path);

/// Returns the last component of a path.
std::string nameOf(const std::string& path);

/// Follows symbolic links, also where the last one points to a file that does not exist yet.
/// @return the path of the file; where that cannot be found, of a link: a link of procfs, such as /dev/stdout
///         leads to, or one of a ring
std::string behindLinks(std::string path);

/// An open file, which the destructor closes.
class Descriptor
{
public:
    /// Opens the file @p path as open(2) does. Programs that this process starts do not inherit it.
    Descriptor(const std::string& path, int flags, mode_t mode = 0);

    /// Takes ownership of an open descriptor; a negative number means none.
    explicit Descriptor(int descriptor) : m_value(descriptor) {}
    ~Descriptor();

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    /// Returns whether the file is open.
    bool isOpen() const { return m_value >= 0; }

    /// Returns the number of the descriptor, negative if it is not open.
    operator int() const { return m_value; }

    /// Closes the file.
    /// @return false on failure: some file systems report a failed write only here
    bool close();

private:
    int m_value;
};

/// While it lives, a write beyond the file size limit fails with EFBIG and a write without a reader with
/// EPIPE; neither raises the signal that would end the program. Holds for the thread that made it.
class WriteSignalsHeld
{
public:
    WriteSignalsHeld();
    ~WriteSignalsHeld();

    WriteSignalsHeld(const WriteSignalsHeld&) = delete;
    WriteSignalsHeld& operator=(const WriteSignalsHeld&) = delete;

private:
    sigset_t m_signals; ///< SIGXFSZ and SIGPIPE, as far as they were not pending before
    sigset_t m_before;
};

/// Writes all @p size bytes at @p data, in as many calls as needed.
/// @return false on failure; part of the data may have been written
bool writeAll(int descriptor, const char* data, std::size_t size);

/// Flushes the file to the disk. A file system without such an operation counts as success.
/// @return false on failure
bool flush(int descriptor);

/// Flushes the directory @p path, so that a rename in it survives a power failure.
/// @return false on failure
bool flushDirectory(const std::string& path);

/// Makes the new file @p path with the contents @p text. On failure removes it.
/// @return false on failure, also if the file exists
bool writeNewFile(const std::string& path, const std::string& text, mode_t mode);

/// Returns whether @p path exists, as a dangling link too.
bool isThere(const std::string& path);

/// Returns whether a file may be replaced: it does not exist or has write permission. A file without write
/// permission may not be replaced, not even by root.
bool isWritable(const std::string& path);

} // namespace vfBase::posix
