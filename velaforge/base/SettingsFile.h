// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vfBase {

/// One text file that is replaced as a whole or not at all, with the generation before it kept beside it.
///
/// Knows nothing of what the text means. No operation throws; failures come back with a reason in plain
/// words. Beside the file stand, while they are needed: "<file>.previous", the generation before;
/// ".<file>.lock"; and what an interrupted save leaves and the next load or save removes: a FileDraft,
/// "<file>.previous-new".
class SettingsFile
{
public:
    enum class State
    {
        Absent,  ///< there is no such file
        Read,    ///< its whole text was read
        Refused, ///< there is something, but not a readable regular file
        TooLarge ///< a regular file past the limit
    };

    struct Contents
    {
        State state = State::Absent;
        std::string text;
        std::string reason; ///< why it was refused
    };

    /// Largest text that is read, in bytes.
    static constexpr std::size_t sizeLimit = std::size_t{16} * 1024 * 1024;

    /// @param path  links are followed, dangling ones too, so that a link to the file stays a link
    explicit SettingsFile(const std::string& path);

    /// @return the path behind all links
    const std::string& path() const { return m_path; }

    /// @return the path of the generation before
    std::string previousPath() const { return m_path + ".previous"; }

    /// Reads the file, without waiting for a FIFO or a device.
    Contents read() const;

    /// Reads the generation before in the same way.
    Contents readPrevious() const;

    /// @return whether the file exists and only its user has access
    bool isPrivate() const;

    /// Makes the missing directories of the file's path, with access for the user alone.
    /// @return false when the last one cannot be made
    bool makeDirectories(std::string& reason) const;

    /// Replaces the file by a new one that holds @p text, private to the user.
    /// @param keepPrevious  keeps the present file as the generation before
    /// @return false, with the file as it was, when that could not be finished
    bool write(const std::string& text, bool keepPrevious, std::string& reason) const;

    /// Gives the present file a second name "<file>.<kind>-<number>" that no other file has.
    /// @return that path, empty when it could not be done
    std::string keepCopy(const char* kind, std::string& reason) const;

    /// Replaces the file by the generation before or, where that is not usable, removes the file.
    /// @return false on failure
    bool restorePrevious(bool isUsable, std::string& reason) const;

    /// @return whether an interrupted save left "<file>.previous-new"
    bool hasLeftovers() const;

    /// Removes that file; only under the lock, since a save in progress has one of the same name.
    void clearLeftovers() const;

    /// Removes the drafts of programs that were killed. Needs no lock: drafts in use are recognised.
    void removeAbandonedDrafts() const;

    /// Keeps other programs from replacing the file while it lives. Waits five seconds at most for one that
    /// does.
    class Lock
    {
    public:
        explicit Lock(const SettingsFile& file);

        /// Releases the lock.
        ~Lock();

        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

        /// @return whether the lock was got; true on a file system without locks
        bool isHeld() const { return m_held; }

        /// @return why it was not, in words
        const std::string& reason() const { return m_reason; }

    private:
        int m_descriptor = -1;
        bool m_held = false;
        std::string m_reason;
    };

private:
    std::string previousNewPath() const { return m_path + ".previous-new"; }

    std::string m_path;
};

} // namespace vfBase
