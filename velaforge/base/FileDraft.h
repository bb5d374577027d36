// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/PosixFiles.h>

#include <string>

#include <sys/types.h>

namespace vfBase::posix {

/// Gives an open file the owner, group, permissions and extended attributes of the regular file at @p path, as far
/// as the system lets this user. What cannot be kept is replaced by less access, never by more: without the
/// former group neither the new group nor others get more than both had, without the former access list only the
/// owner has access. The bits set-user-ID and set-group-ID and file capabilities are dropped, as the system drops
/// them when a file is written to.
/// @return false when the file at @p path cannot be examined
bool copyAttributesOf(const std::string& path, int descriptor);

/// A new file beside a target file. Replaces the target by a rename, or removes itself.
///
///     FileDraft::removeAbandoned(path);
///     FileDraft draft(path, 0600);
///     const bool done = draft.isOpen() && draft.write(contents) && draft.replaceTarget();
///
/// The draft's name is ".<name of the target>.draft-<16 hexadecimal digits>" and belongs to this object
/// alone, whatever other threads, programs and computers do in the directory. The draft stays locked by flock
/// while the object lives; the system releases the lock of a program that was killed, so a draft without a
/// lock is abandoned. Each operation that fails leaves the reason in errno.
class FileDraft
{
public:
    /// Makes an empty draft in the directory of @p target.
    /// @param target  path of the file to replace
    /// @param mode    permissions, as for open(2): the umask applies
    FileDraft(const std::string& target, mode_t mode);

    /// Removes the draft, unless it has replaced the target. Does not change errno.
    ~FileDraft();

    FileDraft(const FileDraft&) = delete;
    FileDraft& operator=(const FileDraft&) = delete;

    /// Returns whether the draft could be made.
    bool isOpen() const { return m_descriptor >= 0; }

    /// Gives the draft the attributes of the target, see copyAttributesOf().
    /// @return false when the target cannot be examined
    bool copyAttributesOfTarget() { return copyAttributesOf(m_target, m_descriptor); }

    /// Writes @p contents and flushes them to the disk.
    bool write(const std::string& contents);

    /// Renames the draft to the target, whose former file is then gone. The caller flushes the directory,
    /// where the new file must survive a power failure.
    bool replaceTarget();

    /// Removes the drafts of @p target that programs left which were killed. Drafts in use stay, and so do
    /// all drafts on a file system without flock, where the two cannot be told apart.
    static void removeAbandoned(const std::string& target);

private:
    std::string m_target;
    std::string m_path;
    int m_descriptor = -1;
};

} // namespace vfBase::posix
