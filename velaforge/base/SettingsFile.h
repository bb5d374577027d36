// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace vfBase {

/// A text file that is replaced as a whole or not at all, with its previous generation beside it.
///
/// No operation throws; failures have a reason for the user. Files beside it: "<file>.previous", the previous
/// generation; ".<file>.lock"; and, after an interrupted save until the next load or save, a FileDraft and
/// "<file>.previous-new".
class SettingsFile
{
public:
    /// What was found at the path.
    enum class State
    {
        Absent,  ///< there is no such file
        Read,    ///< its whole text was read
        Refused, ///< it is not a readable regular file
        TooLarge ///< it is larger than sizeLimit
    };

    /// The result of reading.
    struct Contents
    {
        /// What was found at the path.
        State state = State::Absent;

        /// The text, if it was read.
        std::string text;
        std::string reason; ///< why it was not read
    };

    /// Maximum size of a text that is read, in bytes.
    static constexpr std::size_t sizeLimit = std::size_t{16} * 1024 * 1024;

    /// Refers to the file @p path. Follows links, dangling ones too, so that a link to the file stays a link.
    explicit SettingsFile(const std::string& path);

    /// Returns the path of the file behind all links.
    const std::string& path() const { return m_path; }

    /// Returns the path of the previous generation of the file.
    std::string previousPath() const { return m_path + ".previous"; }

    /// Reads the file. Does not wait for a FIFO or a device.
    Contents read() const;

    /// Reads the previous generation of the file.
    Contents readPrevious() const;

    /// Returns whether the file exists and only its owner has access.
    bool isPrivate() const;

    /// Makes the missing directories of the path, with access for the user only.
    /// @return false, with @p reason set, on failure
    bool makeDirectories(std::string& reason) const;

    /// Replaces the file by a new one that holds @p text, private to the user.
    /// @param text          the new contents
    /// @param keepPrevious  keeps the present file as the previous generation
    /// @param reason        set to the reason if the result is false
    /// @return false, with the file unchanged, on failure
    bool write(const std::string& text, bool keepPrevious, std::string& reason) const;

    /// Gives the present file a second name "<file>.<kind>-<number>" that no other file has.
    /// @return that path; empty, with @p reason set, on failure
    std::string keepCopy(const char* kind, std::string& reason) const;

    /// Replaces the file by its previous generation if @p isUsable is true, otherwise removes the file.
    /// @return false, with @p reason set, on failure
    bool restorePrevious(bool isUsable, std::string& reason) const;

    /// Returns whether an interrupted save left "<file>.previous-new".
    bool hasLeftovers() const;

    /// Removes "<file>.previous-new". Call it only while holding the lock, because a running save has a file
    /// of that name.
    void clearLeftovers() const;

    /// Removes the drafts of programs that were killed. Requires no lock: drafts in use are recognised.
    void removeAbandonedDrafts() const;

    /// Prevents other programs from replacing the file while it exists. The constructor waits for one that does: five
    /// seconds, and longer, up to two minutes, while programs take turns.
    class Lock
    {
    public:
        /// Waits for the lock of @p file.
        explicit Lock(const SettingsFile& file);
        ~Lock();

        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

        /// Returns whether the lock is held; true on a file system without locks.
        bool isHeld() const { return m_held; }

        /// Returns the reason why it is not.
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
