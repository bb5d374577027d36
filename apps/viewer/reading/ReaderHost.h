// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vfViewer {

enum class ReadKind : std::uint8_t
{
    Model,
    Image
};

/// What a process that reads a file may use up.
struct ReadLimits
{
    /// In bytes of memory; 0 for two gigabytes and a hundred times the size of the file, but no more than three quarters
    /// of what the machine has left.
    std::uint64_t memory = 0;

    /// In seconds of working time; 0 for half a minute and two seconds for each megabyte of the file.
    unsigned int seconds = 0;
};

/// A process that was made to read one file.
class Reader
{
public:
    Reader() = default;
    ~Reader();

    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// The memory into which it puts what came of it, see receiveOutcome(); -1 for none.
    int memory = -1;

    /// Becomes readable when it is done or gone. While it is open the process stays, to be looked into.
    int socket = -1;

    /// Its number, which is that of a process for as long as `handle` says so.
    int process = -1;

    /// Ends it at once.
    void kill() const;

    /// Waits until it is done or gone. @return the size of what stands in the memory; 0 when it is gone
    long long takeSize() const;

    /// Has it put everything into the memory, where nobody may look into it; takeSize() then waits for that.
    /// @return false when it is gone
    bool askForArrays() const;

    /// Lets it end: nobody looks into it any more.
    void letGo();

private:
    friend class ReaderHost;
    int m_handle = -1;
};

/// The process from which all others are made that read files.
///
/// Readers of models crash and hang on damaged files, so that no file is read in the program itself. One process is split
/// off the program while it is small and has no threads; it waits, and splits itself for each file. That takes a
/// millisecond, finds the readers loaded that were used before, and leaves nothing of one file for the next.
class ReaderHost
{
public:
    /// Makes the process, unless it is there. To be called at the beginning of main(), ahead of anything that starts
    /// threads; the first file does it otherwise.
    static void start();

    /// Begins to read a file.
    /// @return whether that was possible
    static bool read(ReadKind kind, const std::string& path, const ReadLimits& limits, Reader& reader);

    struct Request;

private:
    static bool ask(const Request& request, Reader& reader);
};

} // namespace vfViewer
