// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/FileIdentity.h>

#include <atomic>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace vfBase {
class LockFile;
}

namespace vfApplication {

class Document;

/// Recovery files: copies of documents with unsaved changes, for the case that the program ends without saving them. The
/// files of the documents themselves never change.
///
/// The copies lie in a directory of the user and are removed when the document is saved or closed. Those of a program that
/// was killed are found by the next one: each program holds a lock that the system releases with it. Use an object on one
/// thread; another one writes the copies.
class VFAPPLICATION_EXPORT Recovery
{
public:
    /// Writes a document to a file. Called on another thread; returns whether it is there as a whole, and may throw.
    using Writer = std::function<bool(const std::string& path)>;

    /// What is kept of a document.
    struct Snapshot
    {
        unsigned long long state = 0;      ///< a number that differs after each change of the document
        vfBase::FileIdentity identity;     ///< of its file when the document was read from it or saved to it
        std::function<Writer()> getWriter; ///< called when the copy is to be written; may throw
    };

    /// A copy that a program has left behind.
    struct VFAPPLICATION_EXPORT Found
    {
        /// The path of the copy; open it like any document.
        std::string copy;

        /// The absolute path of the document's file; the name of a document without a file.
        std::string original;

        /// That file as it was when the document was read from it or saved to it.
        vfBase::FileIdentity identity;

        /// The time at which the copy was written.
        std::time_t time = 0;

        /// Returns whether the document had a file.
        bool hasFile() const { return !original.empty() && original.front() == '/'; }

        /// Returns whether another program has changed, replaced or removed that file since, so that saving the copy to it
        /// would lose the change.
        bool isOriginalChanged() const;
    };

    /// Returns the directory "recovery" in the program's folder for local data.
    static std::string standardDirectory();

    /// @param directory  for the copies; made when there is something to keep
    /// @param extension  of the copies, with its dot, ".osgb"
    Recovery(std::string directory, std::string extension);

    /// Removes the copies of this program.
    ~Recovery();

    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    /// Starts to write a copy of a document, unless its present state is kept. If another copy is still being written, or
    /// writing took long a moment ago, nothing happens until a later call.
    /// @param document  named in the copy; need not live on
    /// @param snapshot  what to write
    /// @return whether the state is kept or being written
    bool keep(const Document& document, const Snapshot& snapshot);

    /// Writes a copy and waits for it.
    /// @param document  as above
    /// @param snapshot  as above
    /// @return whether the copy is there
    bool keepNow(const Document& document, const Snapshot& snapshot);

    /// Removes the copy of a document, which need not exist any more.
    void drop(const Document* document);

    /// Returns the documents that have copies.
    std::vector<const Document*> getKept() const;

    /// Returns the copies of programs that have ended without removing them, oldest first.
    std::vector<Found> findLeftBehind() const;

    /// Removes such a copy.
    static void discard(const Found& found);

    /// Returns whether a copy is being written; drop() waits for it then.
    bool isWriting() const { return m_isWriting; }

    /// Waits until no copy is being written.
    void finishWriting();

private:
    struct Entry
    {
        std::string copy;
        unsigned long long state = 0; ///< of the document when it was copied
    };

    bool begin();
    void write(const Writer& writer, const std::string& copy, const std::string& origin);

    std::string m_directory;
    std::string m_extension;
    std::unique_ptr<vfBase::LockFile> m_lock;
    std::string m_session; ///< the beginning of the names of this program's files
    int m_count = 0;
    std::map<const Document*, Entry> m_entries;
    std::thread m_thread;
    Writer m_writer; ///< at work, or done
    std::atomic<bool> m_isWriting{false};
    std::atomic<double> m_secondsTaken{0};
    double m_nextTime = 0;
};

} // namespace vfApplication
