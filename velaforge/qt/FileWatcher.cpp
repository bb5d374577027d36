// SPDX-License-Identifier: MIT
#include <velaforge/qt/internal/FileWatcher.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QEvent>
#include <QFile>
#include <QFileInfo>

#include <exception>
#include <system_error>
#include <thread>

#include <sys/stat.h>

namespace vfApplication {

namespace {

constexpr long long digestLimit = 64LL * 1024 * 1024;

/// Saving by deleting and writing anew leaves a moment without a file.
constexpr int missesUntilGone = 3;

QString toQPath(const std::string& path)
{
    return QFile::decodeName(path.c_str());
}

} // namespace

bool FileWatcher::Stamp::operator==(const Stamp& other) const
{
    return isThere == other.isThere && device == other.device && inode == other.inode && size == other.size &&
           seconds == other.seconds && nanoseconds == other.nanoseconds;
}

FileWatcher::FileWatcher(int quietTime, QObject* parent)
    : QObject(parent), m_shared(std::make_shared<Shared>())
{
    m_shared->owner = this;
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietTime);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, &FileWatcher::onEvent);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &FileWatcher::onEvent);
    connect(&m_quiet, &QTimer::timeout, this, &FileWatcher::onQuiet);
}

FileWatcher::~FileWatcher()
{
    const std::lock_guard<std::mutex> lock(m_shared->mutex);
    m_shared->owner = nullptr;
}

FileWatcher::Stamp FileWatcher::stampOf(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return {};
    return {true,
            status.st_dev,
            status.st_ino,
            static_cast<long long>(status.st_size),
            status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

/// @return empty for a file that is too large, cannot be read, or changed meanwhile
QByteArray FileWatcher::digestOf(const std::string& path, const Stamp& stamp)
{
    QFile file(toQPath(path));
    QCryptographicHash hash(QCryptographicHash::Md5);
    if (!stamp.isThere || stamp.size > digestLimit || !QFileInfo(file).isFile() ||
        !file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return stampOf(path) == stamp ? hash.result() : QByteArray();
}

void FileWatcher::watch(const std::string& path)
{
    // A file that is replaced takes the watch on it along; the directories tell of its successor.
    const QFileInfo info(toQPath(path));
    for (const QString& watched :
         {info.filePath(), info.absolutePath(), QFileInfo(info.canonicalFilePath()).absolutePath()})
    {
        if (!watched.isEmpty() && QFileInfo::exists(watched))
            m_watcher.addPath(watched);
    }
}

void FileWatcher::add(const std::string& path)
{
    if (path.empty() || contains(path))
        return;
    watch(path);
    acknowledge(path);
}

void FileWatcher::acknowledge(const std::string& path)
{
    Known& known = m_known[path];
    known.stamp = stampOf(path);
    known.digest.clear();
    known.isGoneTold = false;
    known.misses = 0;
    ++known.generation;
    look(path); // for the digest
}

void FileWatcher::remove(const std::string& path)
{
    if (m_known.erase(path) == 0)
        return;
    m_watcher.removePath(toQPath(path));
    // Directories stay watched while a file in them is.
    QSet<QString> needed;
    for (const auto& [other, known] : m_known) {
        const QFileInfo info(toQPath(other));
        needed << info.absolutePath() << QFileInfo(info.canonicalFilePath()).absolutePath();
    }
    for (const QString& directory : m_watcher.directories()) {
        if (!needed.contains(directory))
            m_watcher.removePath(directory);
    }
}

void FileWatcher::onEvent()
{
    m_quiet.start();
}

void FileWatcher::onQuiet()
{
    for (const auto& [path, known] : m_known)
        look(path);
}

void FileWatcher::look(const std::string& path)
{
    const Known& known = m_known.at(path);
    const auto job = [shared = m_shared, path, generation = known.generation, stamp = known.stamp,
                      digest = known.digest] {
        try {
            Finding finding{path, generation, stampOf(path), digest};
            if (!(finding.stamp == stamp) || digest.isEmpty())
                finding.digest = digestOf(path, finding.stamp);
            const std::lock_guard<std::mutex> lock(shared->mutex);
            if (!shared->owner)
                return;
            shared->findings.push_back(std::move(finding));
            QCoreApplication::postEvent(shared->owner, new QEvent(QEvent::User));
        } catch (const std::exception&) {
            // Without memory nothing is found this time; the next change of the directory has it looked at again.
        }
    };
    try {
        std::thread(job).detach();
    } catch (const std::system_error&) {
        m_quiet.start(); // another time
    }
}

void FileWatcher::customEvent(QEvent*)
{
    std::vector<Finding> findings;
    {
        const std::lock_guard<std::mutex> lock(m_shared->mutex);
        findings.swap(m_shared->findings);
    }
    for (const Finding& finding : findings)
        onFinding(finding);
}

void FileWatcher::onFinding(const Finding& finding)
{
    const auto found = m_known.find(finding.path);
    if (found == m_known.end())
        return;
    Known& known = found->second;
    if (finding.generation != known.generation)
        return; // written or read by this program meanwhile, which started another look
    const QByteArray path = QByteArray::fromStdString(finding.path);
    if (!finding.stamp.isThere) {
        if (known.isGoneTold || !known.stamp.isThere)
            return;
        if (++known.misses < missesUntilGone) {
            m_quiet.start();
            return;
        }
        known.isGoneTold = true;
        Q_EMIT removed(path);
        return;
    }
    known.misses = 0;
    const bool wasGone = std::exchange(known.isGoneTold, false);
    if (!m_watcher.files().contains(toQPath(finding.path)))
        watch(finding.path);
    const bool isSame =
        finding.stamp == known.stamp || (!finding.digest.isEmpty() && finding.digest == known.digest);
    known.stamp = finding.stamp;
    known.digest = finding.digest;
    if (!isSame) {
        ++known.generation;
        Q_EMIT changed(path);
    } else if (wasGone) {
        Q_EMIT restored(path);
    }
}

} // namespace vfApplication
