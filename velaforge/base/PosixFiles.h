// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <string>

#include <sys/types.h>

/// What the writers of files in this library share: plain calls of the system, each result looked at. Failures leave
/// their reason in errno.
namespace vfBase::posix {

/// @return what errno says, in words
std::string systemReason();

/// @return the directory of a path, "." when it names none
std::string directoryOf(const std::string& path);
std::string nameOf(const std::string& path);

/// Follows symbolic links, also where the last one points to a file that does not exist yet.
/// @return the path of the file; where that cannot be found, of a link: a link of procfs, such as /dev/stdout leads to,
///         or one of a ring
std::string behindLinks(std::string path);

/// An open file that is closed at the end.
class Descriptor
{
public:
    Descriptor(const std::string& path, int flags, mode_t mode = 0);

    /// Takes over an open descriptor; a negative number stands for none.
    explicit Descriptor(int descriptor) : m_value(descriptor) {}
    ~Descriptor();

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return m_value >= 0; }
    operator int() const { return m_value; }

    /// Closing may be the moment in which a file system tells that it could not write.
    bool close();

private:
    int m_value;
};

/// While it lives, a write beyond the file size limit fails with EFBIG and a write without a reader with EPIPE; neither
/// raises the signal that would end the program. Holds for the thread that made it.
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

bool writeAll(int descriptor, const char* data, std::size_t size);

/// Some file systems have no flushing of their own and say so; that is no failure.
bool flush(int descriptor);
bool flushDirectory(const std::string& path);

/// Writes a new file that nobody has opened before. On failure nothing is left of it.
bool writeNewFile(const std::string& path, const std::string& text, mode_t mode);

/// @return whether there is something of that name, a dangling link too
bool isThere(const std::string& path);

/// @return whether a file may be replaced: it is not there, or it may be written. Root may write what is marked as
///         read-only; the mark counts all the same.
bool isWritable(const std::string& path);

} // namespace vfBase::posix
