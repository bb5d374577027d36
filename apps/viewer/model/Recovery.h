// SPDX-License-Identifier: MIT
#pragma once

#include "model/FileIdentity.h"

#include <osg/Node>
#include <osg/ref_ptr>

#include <atomic>
#include <ctime>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace vfViewer {

class ModelDocument;

/// Keeps copies of what is not saved, for the case that the program does not live to save it. The files of the documents
/// are never touched.
///
/// The copies lie in a directory of the user, and go when the document is saved or closed. Those of a program that is gone
/// are found by the next one: each program holds a lock that ends with it. Belongs on one thread; the copies are written
/// on another.
class Recovery
{
public:
    /// A copy that a program has left behind.
    struct Found
    {
        /// To be opened like any model.
        std::string copy;

        /// The absolute path of the file that the document was of; the name of a document without a file.
        std::string original;

        /// That file as it was when the document was read from it or saved to it.
        FileIdentity identity;

        /// When the copy was written.
        std::time_t time = 0;

        /// Returns whether the document had a file. False for a copy of an earlier version that kept a relative path.
        bool hasFile() const { return !original.empty() && original.front() == '/'; }

        /// Returns whether another program changed, replaced or removed the file since: saving the copy to it would lose
        /// that. False for a copy of an earlier version, which kept no identity.
        bool isOriginalChanged() const;
    };

    /// @return the directory of this program's copies
    static std::string standardDirectory();

    /// @param directory  made when there is something to keep
    explicit Recovery(std::string directory);

    /// Takes the copies of this program away: it has come to its end.
    ~Recovery();

    Recovery(const Recovery&) = delete;
    Recovery& operator=(const Recovery&) = delete;

    /// Begins to write a copy of a document that has changes, if they are not kept yet. When another one is still being
    /// written, or has taken long a moment ago, it waits for the next call.
    /// @return whether it is kept, or about to be
    bool keep(const ModelDocument& document);

    /// Writes a copy at once. @return whether it is there
    bool keepNow(const ModelDocument& document);

    /// Takes the copy of a document away. The document need not be there any more.
    void drop(const ModelDocument* document);

    /// @return the documents that there are copies of
    std::vector<const ModelDocument*> getKept() const;

    /// @return what programs have left behind that are gone, the oldest first
    std::vector<Found> findLeftBehind() const;

    /// Takes such a copy away.
    static void discard(const Found& found);

    /// @return whether a copy is being written; drop() waits for its end then
    bool isWriting() const { return m_isWriting; }

    /// Waits until nothing is being written.
    void finishWriting();

private:
    struct Entry
    {
        std::string copy;
        unsigned long long state = 0; ///< of the scene when it was copied
    };

    bool begin();
    void write(const osg::ref_ptr<osg::Node>& scene, const std::string& copy, const std::string& origin);

    std::string m_directory;
    std::string m_session; ///< what the names of this program's files begin with
    int m_lock = -1;
    int m_count = 0;
    std::map<const ModelDocument*, Entry> m_entries;
    std::thread m_writer;
    osg::ref_ptr<osg::Node> m_written; ///< which is written, or was
    std::atomic<bool> m_isWriting{false};
    std::atomic<double> m_secondsTaken{0};
    double m_nextTime = 0;
};

} // namespace vfViewer
