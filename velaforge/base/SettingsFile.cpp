// SPDX-License-Identifier: MIT
#include <velaforge/base/SettingsFile.h>

#include <velaforge/base/FileDraft.h>
#include <velaforge/base/PosixFiles.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vfBase {

using namespace posix;

namespace {

// How long a lock is waited for: ten milliseconds at a time, five seconds while nothing happens, two minutes in all.
constexpr timespec lockPause{0, 10000000};
constexpr int mostTries = 500;
constexpr int mostTriesInAll = 12000;

/// Returns what tells a file from the one that replaces it; 0 if there is none.
ino_t inodeOf(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

SettingsFile::Contents readFile(const std::string& path)
{
    using State = SettingsFile::State;
    // Without O_NONBLOCK a FIFO in the place of the file would hold the program up for ever.
    const Descriptor file(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!file.isOpen()) {
        if (errno == ENOENT || errno == ENOTDIR)
            return {State::Absent, {}, systemReason()};
        return {State::Refused, {}, systemReason()};
    }
    struct stat status;
    if (fstat(file, &status) != 0)
        return {State::Refused, {}, systemReason()};
    if (!S_ISREG(status.st_mode))
        return {
            State::Refused, {}, S_ISDIR(status.st_mode) ? "it is a directory" : "it is not a regular file"};
    std::string text;
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const ssize_t count = ::read(file, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return {State::Refused, {}, systemReason()};
        if (count == 0)
            return {State::Read, text, {}};
        text.append(buffer.data(), static_cast<std::size_t>(count));
        if (text.size() > SettingsFile::sizeLimit)
            return {State::TooLarge, {}, "it is larger than 16 MiB"};
    }
}

/// Gives @p from the second name @p to, which must not exist. Where the file system has no second names,
/// makes a copy.
bool linkOrCopy(const std::string& from, const std::string& to)
{
    if (link(from.c_str(), to.c_str()) == 0)
        return true;
    if (errno == EEXIST || errno == ENOENT)
        return false;
    const SettingsFile::Contents contents = readFile(from);
    if (contents.state != SettingsFile::State::Read) {
        errno = EIO;
        return false;
    }
    return writeNewFile(to, contents.text, 0600);
}

} // namespace

SettingsFile::SettingsFile(const std::string& path) : m_path(behindLinks(path)) {}

SettingsFile::Contents SettingsFile::read() const
{
    return readFile(m_path);
}

SettingsFile::Contents SettingsFile::readPrevious() const
{
    return readFile(previousPath());
}

bool SettingsFile::hasLeftovers() const
{
    return isThere(previousNewPath());
}

bool SettingsFile::isPrivate() const
{
    struct stat status;
    return stat(m_path.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

bool SettingsFile::makeDirectories(std::string& reason) const
{
    const std::string directory = directoryOf(m_path);
    for (std::size_t end = directory.find('/', 1);; end = directory.find('/', end + 1)) {
        const std::string part = directory.substr(0, end);
        if (mkdir(part.c_str(), 0700) == 0) {
            flushDirectory(directoryOf(part));
        } else if (errno != EEXIST && end == std::string::npos) {
            // On the way to it, what cannot be made may be there all the same, out of reach of a question.
            reason = systemReason();
            return false;
        }
        if (end == std::string::npos)
            return true;
    }
}

bool SettingsFile::write(const std::string& text, bool keepPrevious, std::string& reason) const
{
    const WriteSignalsHeld held;
    const auto failed = [&reason] {
        reason = systemReason();
        return false;
    };
    if (text.size() > sizeLimit) {
        reason = "they are larger than 16 MiB";
        return false;
    }
    if (!isWritable(m_path))
        return failed();
    removeAbandonedDrafts();
    FileDraft draft(m_path, 0600);
    if (!draft.isOpen() || !draft.write(text))
        return failed();
    if (keepPrevious && isThere(m_path)) {
        // Both names are there before the old one goes, so that each moment has a whole generation.
        if (!linkOrCopy(m_path, previousNewPath()) ||
            rename(previousNewPath().c_str(), previousPath().c_str()) != 0) {
            failed();
            unlink(previousNewPath().c_str());
            return false;
        }
        unlink(previousNewPath().c_str()); // rename leaves it where both names are one file
    }
    return (draft.replaceTarget() && flushDirectory(directoryOf(m_path))) || failed();
}

std::string SettingsFile::keepCopy(const char* kind, std::string& reason) const
{
    for (int number = 1; number < 10000; ++number) {
        std::string path = m_path + "." + kind + "-" + std::to_string(number);
        if (linkOrCopy(m_path, path)) {
            flushDirectory(directoryOf(m_path));
            return path;
        }
        if (errno != EEXIST)
            break;
    }
    reason = systemReason();
    return {};
}

bool SettingsFile::restorePrevious(bool isUsable, std::string& reason) const
{
    bool done = false;
    if (isUsable) {
        const Contents previous = readPrevious();
        if (previous.state != State::Read) {
            reason = previous.reason;
            return false;
        }
        FileDraft draft(m_path, 0600);
        done = draft.isOpen() && draft.write(previous.text) && draft.replaceTarget();
    } else {
        done = unlink(m_path.c_str()) == 0;
    }
    if (!done) {
        reason = systemReason();
        return false;
    }
    flushDirectory(directoryOf(m_path));
    return true;
}

void SettingsFile::removeAbandonedDrafts() const
{
    FileDraft::removeAbandoned(m_path);
}

void SettingsFile::clearLeftovers() const
{
    const int error = errno;
    unlink(previousNewPath().c_str());
    errno = error;
}

SettingsFile::Lock::Lock(const SettingsFile& file)
{
    const std::string path = directoryOf(file.path()) + "/." + nameOf(file.path()) + ".lock";
    m_descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (m_descriptor < 0) {
        m_reason = systemReason();
        return;
    }
    // As long as the file changes, other programs get their turn, and this one will.
    ino_t present = inodeOf(file.path());
    for (int tries = 0, all = 0; tries < mostTries && all < mostTriesInAll; ++tries, ++all) {
        if (flock(m_descriptor, LOCK_EX | LOCK_NB) == 0) {
            m_held = true;
            return;
        }
        if (errno != EWOULDBLOCK && errno != EINTR) {
            m_held = true; // a file system without locks: better unguarded than not at all
            return;
        }
        nanosleep(&lockPause, nullptr);
        if (const ino_t now = inodeOf(file.path()); now != present) {
            present = now;
            tries = 0;
        }
    }
    m_reason = "another program has locked them";
}

SettingsFile::Lock::~Lock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

} // namespace vfBase
