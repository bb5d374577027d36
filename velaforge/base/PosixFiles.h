// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <string>

#include <sys/types.h>

/// Calls of the system that the writers of files in this library share, with each result checked. Failures
/// leave their reason in errno.
namespace vfBase::posix {

/// @return the reason that is in errno, in words
std::string systemReason();

/// @return the directory of a path, "." when it names none
std::string directoryOf(const std::string& path);

/// @return the last component of a path
std::string nameOf(const std::string& path);

/// Follows symbolic links, also where the last one points to a file that does not exist yet.
/// @return the path of the file; where that cannot be found, of a link: a link of procfs, such as /dev/stdout
///         leads to, or one of a ring
std::string behindLinks(std::string path);

/// An open file, closed by the destructor.
class Descriptor
{
public:
    /// Opens a file as open(2) does, not to be inherited by programs that are started.
    Descriptor(const std::string& path, int flags, mode_t mode = 0);

    /// Takes over an open descriptor; a negative number stands for none.
    explicit Descriptor(int descriptor) : m_value(descriptor) {}
    ~Descriptor();

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    /// @return whether a file is open
    bool isOpen() const { return m_value >= 0; }

    /// @return the descriptor, negative when none is open
    operator int() const { return m_value; }

    /// Closes the file. @return false when the file system reports only now that it could not write
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

/// Writes all of the data. @return false on failure; part of it may have been written
bool writeAll(int descriptor, const char* data, std::size_t size);

/// Flushes an open file to the disk. A file system that says that it has no flushing counts as success.
bool flush(int descriptor);

/// Flushes a directory to the disk, so that a rename in it survives a power failure.
bool flushDirectory(const std::string& path);

/// Writes and flushes a file that must not exist yet. On failure it is removed again.
bool writeNewFile(const std::string& path, const std::string& text, mode_t mode);

/// @return whether there is a file, directory or link of that name, a dangling link too
bool isThere(const std::string& path);

/// @return whether a file may be replaced: it does not exist, or may be written. A file that its owner marked
///         as read-only may not be replaced, not even by root
bool isWritable(const std::string& path);

} // namespace vfBase::posix
