// SPDX-License-Identifier: MIT
#include "model/Recovery.h"

#include "model/ModelDocument.h"

#include <velaforge/base/FileNames.h>
#include <velaforge/base/StandardPaths.h>

#include <osg/Timer>
#include <osgDB/Registry>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfViewer {

namespace fs = std::filesystem;

namespace {

const char* const lockEnding = ".lock";
const char* const copyEnding = ".osgb";
const char* const originalEnding = ".path";

double now()
{
    return osg::Timer::instance()->time_s();
}

std::string withoutEnding(const std::string& path)
{
    return fs::path(path).replace_extension().string();
}

/// @return a copy that another thread may write to a file. It shares the arrays: commands replace arrays, they do not write
///         to them. Animations do, so an animated model is copied whole
osg::ref_ptr<osg::Node> copyOf(const ModelDocument& document)
{
    osg::CopyOp::CopyFlags flags = osg::CopyOp::DEEP_COPY_NODES | osg::CopyOp::DEEP_COPY_DRAWABLES |
                                   osg::CopyOp::DEEP_COPY_STATESETS | osg::CopyOp::DEEP_COPY_STATEATTRIBUTES;
    if (!document.getAnimation().isEmpty())
        flags |= osg::CopyOp::DEEP_COPY_ARRAYS | osg::CopyOp::DEEP_COPY_PRIMITIVES |
                 osg::CopyOp::DEEP_COPY_CALLBACKS;
    const osg::CopyOp copy(flags);
    osg::Group& root = document.scene();
    if (root.getNumChildren() == 1)
        return osg::clone(root.getChild(0), copy);
    return osg::clone(static_cast<osg::Node*>(&root), copy);
}

/// @return what is kept of a document beside its copy: the path of its file, and the file as it was, apart by a zero byte
std::string originOf(const ModelDocument& document)
{
    // The name of a new document is none of a file.
    const vfBase::VfString name = document.getFilename();
    const vfBase::VfString path = document.alreadySaved() ? vfBase::absolutePath(name) : name;
    return path.str() + '\0' + document.getFileIdentity().text();
}

bool writeText(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    return file.flush().good();
}

/// @return whether the program of that lock is gone
bool isGone(const std::string& lock)
{
    const int file = open(lock.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    const bool isFree = file >= 0 && flock(file, LOCK_EX | LOCK_NB) == 0;
    if (file >= 0)
        close(file);
    return isFree;
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

Recovery::Recovery(std::string directory) : m_directory(std::move(directory)) {}

Recovery::~Recovery()
{
    finishWriting();
    while (!m_entries.empty())
        drop(m_entries.begin()->first);
    if (m_lock < 0)
        return;
    unlink((m_session + lockEnding).c_str());
    close(m_lock);
}

bool Recovery::begin()
{
    if (m_lock >= 0)
        return true;
    std::error_code problem;
    fs::create_directories(m_directory, problem);
    chmod(m_directory.c_str(), S_IRWXU); // models are private
    std::string name = m_directory + "/session-XXXXXX" + lockEnding;
    m_lock = mkostemps(name.data(), 5, O_CLOEXEC);
    if (m_lock < 0)
        return false;
    flock(m_lock, LOCK_EX | LOCK_NB);
    m_session = withoutEnding(name);
    return true;
}

void Recovery::finishWriting()
{
    if (m_writer.joinable())
        m_writer.join();
    m_written = nullptr;
}

bool Recovery::keep(const ModelDocument& document)
{
    if (!m_isWriting)
        finishWriting(); // lets go of what was written
    const unsigned long long state = document.getModelScene().getState();
    const auto known = m_entries.find(&document);
    if (known != m_entries.end() && known->second.state == state)
        return true;
    if (m_isWriting || now() < m_nextTime || !begin())
        return false;
    finishWriting();
    Entry& entry = m_entries[&document];
    if (entry.copy.empty())
        entry.copy = m_session + "-" + std::to_string(++m_count) + copyEnding;
    entry.state = state;
    m_isWriting = true;
    m_nextTime = now() + 10 * m_secondsTaken; // a large model is not written all the time
    // The copy shares what is large with the model: the last to let go of that is to be this thread.
    try {
        m_written = copyOf(document);
        m_writer = std::thread([this, scene = m_written, copy = entry.copy, origin = originOf(document)] {
            write(scene, copy, origin);
        });
    } catch (const std::exception&) { // no memory, or no thread: another time
        m_written = nullptr;
        entry.state = 0;
        m_isWriting = false;
    }
    return m_isWriting || entry.state == state;
}

bool Recovery::keepNow(const ModelDocument& document)
{
    finishWriting();
    m_nextTime = 0;
    const bool isBegun = keep(document);
    finishWriting();
    return isBegun && fs::exists(m_entries[&document].copy);
}

void Recovery::write(const osg::ref_ptr<osg::Node>& scene, const std::string& copy, const std::string& origin)
{
    const double start = now();
    const std::string draft = copy + ".part";
    bool isWritten = false;
    try {
        osgDB::ReaderWriter* writer = osgDB::Registry::instance()->getReaderWriterForExtension("osgb");
        if (writer && writeText(withoutEnding(copy) + originalEnding, origin)) {
            std::ofstream file(draft, std::ios::binary);
            const osg::ref_ptr<osgDB::Options> options = new osgDB::Options("WriteImageHint=IncludeData");
            isWritten = writer->writeNode(*scene, file, options).success() && file.flush().good();
        }
    } catch (const std::exception&) {
        // As on a full disk: the copy before stays.
    }
    // The one before is there until this one is whole.
    if (!isWritten || rename(draft.c_str(), copy.c_str()) != 0)
        unlink(draft.c_str());
    m_secondsTaken = now() - start;
    m_isWriting = false;
}

void Recovery::drop(const ModelDocument* document)
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

std::vector<const ModelDocument*> Recovery::getKept() const
{
    std::vector<const ModelDocument*> kept;
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
        if (entry->path().extension() == lockEnding && withoutEnding(path) != m_session && isGone(path))
            sessions.push_back(withoutEnding(path));
    }
    for (const std::string& session : sessions) {
        bool isEmpty = true;
        for (fs::directory_iterator entry(m_directory, problem), end; !problem && entry != end;
             entry.increment(problem))
        {
            const std::string path = entry->path().string();
            struct stat status;
            const bool isCopy = path.compare(0, session.size() + 1, session + "-") == 0 &&
                                entry->path().extension() == copyEnding &&
                                lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
            if (!isCopy)
                continue;
            std::ifstream file(withoutEnding(path) + originalEnding, std::ios::binary);
            std::string original;
            std::string identity;
            std::getline(file, original, '\0');
            std::getline(file, identity, '\0');
            found.push_back({path, original, FileIdentity::fromText(identity), status.st_mtime});
            isEmpty = false;
        }
        if (isEmpty)
            unlink((session + lockEnding).c_str());
    }
    std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        return a.time < b.time || (a.time == b.time && a.copy < b.copy);
    });
    return found;
}

void Recovery::discard(const Found& found)
{
    unlink(found.copy.c_str());
    unlink((found.copy + ".part").c_str());
    unlink((withoutEnding(found.copy) + originalEnding).c_str());
}

} // namespace vfViewer
