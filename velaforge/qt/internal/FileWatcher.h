// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/qt/Export.h>

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vfApplication {

/// Tells when files change, by what stands in them: once for each change, however many events it makes, and whether the
/// file was written in place, replaced by another, or removed and made anew. A file that was only touched has not
/// changed. Files above 64 MiB are told apart by size and time alone.
///
/// One thread looks at the files, one after another, after nothing has happened to them for a moment. It ends when there are
/// no more; no other thread waits for it.
class VFAPPLICATIONQT_EXPORT FileWatcher : public QObject
{
    Q_OBJECT

public:
    /// @param quietTime  in milliseconds: how long nothing must happen to a file before it is looked at
    explicit FileWatcher(int quietTime, QObject* parent = nullptr);
    ~FileWatcher() override;

    /// Begins to watch; the file as it is now is known. Nothing new for one that is watched.
    void add(const std::string& path);
    void remove(const std::string& path);
    bool contains(const std::string& path) const { return m_known.count(path) > 0; }

    /// Takes the file as it is now for known: it was written or read by this program.
    void acknowledge(const std::string& path);

Q_SIGNALS:
    /// Something else stands in the file than what was known.
    void changed(const QByteArray& path);

    /// The file is gone, and did not come back within a moment.
    void removed(const QByteArray& path);

    /// It is back, with what stood in it before.
    void restored(const QByteArray& path);

protected:
    void customEvent(QEvent* event) override;

private:
    struct Stamp
    {
        bool isThere = false;
        unsigned long long device = 0;
        unsigned long long inode = 0;
        long long size = 0;
        long long seconds = 0;
        long long nanoseconds = 0;

        bool operator==(const Stamp& other) const;
    };
    struct Known
    {
        Stamp stamp;
        QByteArray digest; ///< empty while it is not known
        int generation = 0;
        bool isGoneTold = false;
        int misses = 0; ///< how often it was looked for in vain
    };
    struct Finding
    {
        std::string path;
        int generation = 0;
        Stamp stamp;
        QByteArray digest;
    };

    /// A file to look at, and what is known of it.
    struct Task
    {
        std::string path;
        int generation = 0;
        Stamp stamp;
        QByteArray digest;
    };

    /// Outlives this object while the thread is at work.
    struct Shared
    {
        std::mutex mutex;
        FileWatcher* owner = nullptr;
        std::deque<Task> tasks; ///< at most one for each file
        bool isWorking = false; ///< the thread exists, and takes what is in tasks
        std::vector<Finding>
            findings; ///< which the owner has been told of by an event, and has not taken yet
    };

    static Stamp stampOf(const std::string& path);
    static void work(const std::shared_ptr<Shared>& shared);
    static Finding lookAt(const Task& task);
    static QByteArray digestOf(const std::string& path, const Stamp& stamp);
    void look(const std::string& path);
    void onEvent();
    void onQuiet();
    void onFinding(const Finding& finding);
    void watch(const std::string& path);

    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
    std::map<std::string, Known> m_known;
    std::shared_ptr<Shared> m_shared;
};

} // namespace vfApplication
