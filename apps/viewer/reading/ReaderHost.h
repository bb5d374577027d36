// SPDX-License-Identifier: MIT
#pragma once

#include "reading/ReaderProtocol.h"

#include <velaforge/isolation/JobControl.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace vfViewer {

/// What a process that reads or writes a file may use up.
struct ReadLimits
{
    /// In bytes of memory; 0 for two gigabytes and a hundred times the size of the file, but no more than three quarters
    /// of what the machine has left.
    std::uint64_t memory = 0;

    /// In seconds of working time; 0 for half a minute and two seconds for each megabyte of the file.
    unsigned int seconds = 0;

    /// In seconds of the clock, in which the process may also wait for a disk; 0 for ten times the working time.
    unsigned int clockSeconds = 0;

    /// @return the limits for a file of that size, none of them 0
    ReadLimits forSize(std::uint64_t bytes) const;
};

/// A process that was made to read or write one file. It ends with the object.
class Reader
{
public:
    Reader() = default;
    ~Reader();

    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// What it does, for the limits; see waitFor().
    std::string path;
    std::uint64_t size = 0;
    ReadLimits limits;
    std::chrono::steady_clock::time_point end;

    int scene = -1;    ///< the memory for the scene
    int progress = -1; ///< the memory for its progress, see ReadProgress
    int socket = -1;   ///< while it is open the process stays, and its memory can be read
    int process = -1;  ///< its number, which is its own while the object lives

    /// Whether its memory can be read.
    bool isReadable = false;

    /// Waits for its end. Sets the progress of the job meanwhile.
    /// @return why there is nothing; empty when @p done is set. A cancelled job has a reason, too
    std::string waitFor(vfIsolation::JobControl& control, ReaderDone& done);

    /// Ends it at once.
    void kill() const;

    /// Lets it end.
    void letGo();

private:
    friend class ReaderHost;
    int m_handle = -1;
};

/// Starts the launcher, from which all processes come that read and write files.
///
/// Readers of models crash and hang on damaged files, so that no file is read in the program itself. The launcher is a
/// program of its own, which has the readers loaded that were used before and forks for each file: that takes a millisecond,
/// and leaves nothing of one file for the next. A launcher that was killed, or does not answer, is replaced.
class ReaderHost
{
public:
    /// Starts the launcher, unless it runs. The first file does it otherwise.
    static void start();

    /// Begins to read or write a file. May be called on any thread.
    /// @param path  absolute
    /// @param sceneFile  the scene to be written, of @p sceneSize bytes; -1 for reading. Stays the caller's
    /// @return why that was not possible; empty when it was
    static std::string begin(ReadKind kind, const std::string& path, const ReadLimits& limits,
                             vfIsolation::JobControl& control, Reader& reader, int sceneFile = -1,
                             long long sceneSize = 0);

private:
    enum class Answer
    {
        Started,
        LauncherLost,
        TooLong,
        Cancelled,
        Impossible
    };
    static Answer ask(const ReaderRequest& request, vfIsolation::JobControl& control, Reader& reader);
};

} // namespace vfViewer
