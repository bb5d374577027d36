// SPDX-License-Identifier: MIT
#include <velaforge/documents/Recovery.h>

#include <velaforge/base/FileNames.h>
#include <velaforge/base/LockFile.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/documents/Document.h>

#include <osg/Timer>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
#include <utility>

namespace vfApplication {

namespace fs = std::filesystem;
using vfBase::FileIdentity;

namespace {

const char* const lockEnding = ".lock";
const char* const originalEnding = ".path";
const char* const draftBeginning = "draft-";

double now()
{
    return osg::Timer::instance()->time_s();
}

std::string withoutEnding(const std::string& path)
{
    return fs::path(path).replace_extension().string();
}

/// Returns the path at which a copy is written before it replaces the one before. It has the extension of the copy.
std::string draftOf(const std::string& copy)
{
    const fs::path path(copy);
    return (path.parent_path() / (draftBeginning + path.filename().string())).string();
}

void removeFile(const std::string& path)
{
    std::error_code problem;
    fs::remove(path, problem);
}

/// Returns what is kept of a document beside its copy: the path of its file, and the state of that, with a zero byte between.
std::string originOf(const Document& document, const FileIdentity& identity)
{
    // The name of a new document is not that of a file.
    const vfBase::VfString name = document.getFilename();
    const vfBase::VfString path = document.alreadySaved() ? vfBase::absolutePath(name) : name;
    return path.str() + '\0' + identity.text();
}

bool writeText(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    return file.flush().good();
}

/// Returns the time of the last change of a file.
std::time_t timeOf(const fs::path& path)
{
    // The clock of files has another epoch than that of the calendar.
    std::error_code problem;
    const auto age = fs::file_time_type::clock::now() - fs::last_write_time(path, problem);
    const auto time = std::chrono::system_clock::now() - age;
    return std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(time));
}

} // namespace

bool Recovery::Found::isOriginalChanged() const
{
    return identity.isOfFile() && identity != FileIdentity::of(original);
}

std::string Recovery::standardDirectory()
{
    using vfBase::StandardPaths;
    return std::string(StandardPaths::standardLocation(StandardPaths::LocalData)) + "/recovery";
}

Recovery::Recovery(std::string directory, std::string extension)
    : m_directory(std::move(directory)), m_extension(std::move(extension))
{}

Recovery::~Recovery()
{
    finishWriting();
    while (!m_entries.empty())
        drop(m_entries.begin()->first);
}

bool Recovery::begin()
{
    if (m_lock)
        return true;
    std::error_code problem;
    fs::create_directories(m_directory, problem);
    fs::permissions(m_directory, fs::perms::owner_all, problem); // documents are private
    auto lock = std::make_unique<vfBase::LockFile>(m_directory + "/session-", lockEnding);
    if (!lock->isHeld())
        return false;
    m_lock = std::move(lock);
    m_session = withoutEnding(m_lock->path());
    return true;
}

void Recovery::finishWriting()
{
    if (m_thread.joinable())
        m_thread.join();
    m_writer = nullptr;
}

bool Recovery::keep(const Document& document, const Snapshot& snapshot)
{
    if (!m_isWriting)
        finishWriting(); // releases what was written
    const auto known = m_entries.find(&document);
    if (known != m_entries.end() && known->second.state == snapshot.state)
        return true;
    if (m_isWriting || now() < m_nextTime || !begin())
        return false;
    finishWriting();
    Entry& entry = m_entries[&document];
    if (entry.copy.empty())
        entry.copy = m_session + "-" + std::to_string(++m_count) + m_extension;
    entry.state = snapshot.state;
    m_isWriting = true;
    m_nextTime = now() + 10 * m_secondsTaken; // a large document is not written all the time
    // A writer may share what is large with the document: this thread is the last to release that.
    try {
        m_writer = snapshot.getWriter();
        m_thread =
            std::thread([this, &writer = m_writer, copy = entry.copy,
                         origin = originOf(document, snapshot.identity)] { write(writer, copy, origin); });
    } catch (const std::exception&) { // no memory, or no thread: a later call tries again
        m_writer = nullptr;
        entry.state = 0;
        m_isWriting = false;
    }
    return m_isWriting || entry.state == snapshot.state;
}

bool Recovery::keepNow(const Document& document, const Snapshot& snapshot)
{
    finishWriting();
    m_nextTime = 0;
    const bool isBegun = keep(document, snapshot);
    finishWriting();
    const auto entry = m_entries.find(&document);
    return isBegun && entry != m_entries.end() && fs::exists(entry->second.copy);
}

void Recovery::write(const Writer& writer, const std::string& copy, const std::string& origin)
{
    const double start = now();
    const std::string draft = draftOf(copy);
    bool isWritten = false;
    try {
        isWritten = writeText(withoutEnding(copy) + originalEnding, origin) && writer(draft);
    } catch (const std::exception&) {
        // As on a full disk: the copy before stays.
    }
    std::error_code problem;
    if (isWritten)
        fs::rename(draft, copy, problem);
    if (!isWritten || problem)
        removeFile(draft);
    m_secondsTaken = now() - start;
    m_isWriting = false;
}

void Recovery::drop(const Document* document)
{
    const auto found = m_entries.find(document);
    if (found == m_entries.end())
        return;
    finishWriting();
    Found dropped;
    dropped.copy = found->second.copy;
    discard(dropped);
    m_entries.erase(found);
}

std::vector<const Document*> Recovery::getKept() const
{
    std::vector<const Document*> kept;
    for (const auto& [document, entry] : m_entries)
        kept.push_back(document);
    return kept;
}

std::vector<Recovery::Found> Recovery::findLeftBehind() const
{
    std::vector<Found> found;
    std::error_code problem;
    std::vector<std::string> sessions;
    for (fs::directory_iterator entry(m_directory, problem), end; !problem && entry != end;
         entry.increment(problem))
    {
        const std::string path = entry->path().string();
        if (entry->path().extension() == lockEnding && withoutEnding(path) != m_session &&
            vfBase::LockFile::isAbandoned(path))
            sessions.push_back(withoutEnding(path));
    }
    for (const std::string& session : sessions) {
        bool isEmpty = true;
        for (fs::directory_iterator entry(m_directory, problem), end; !problem && entry != end;
             entry.increment(problem))
        {
            const std::string path = entry->path().string();
            const bool isCopy = path.compare(0, session.size() + 1, session + "-") == 0 &&
                                entry->path().extension() == m_extension &&
                                fs::is_regular_file(entry->symlink_status(problem));
            if (!isCopy)
                continue;
            std::ifstream file(withoutEnding(path) + originalEnding, std::ios::binary);
            std::string original;
            std::string identity;
            std::getline(file, original, '\0');
            std::getline(file, identity, '\0');
            found.push_back({path, original, FileIdentity::fromText(identity), timeOf(entry->path())});
            isEmpty = false;
        }
        if (isEmpty)
            removeFile(session + lockEnding);
    }
    std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        return a.time < b.time || (a.time == b.time && a.copy < b.copy);
    });
    return found;
}

void Recovery::discard(const Found& found)
{
    removeFile(found.copy);
    removeFile(draftOf(found.copy));
    removeFile(withoutEnding(found.copy) + originalEnding);
}

} // namespace vfApplication
