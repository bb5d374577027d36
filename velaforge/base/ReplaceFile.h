// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

#include <string>

namespace vfBase {

/// Replaces a file as a whole, or leaves it unchanged.
///
///     vfBase::VfString reason;
///     if (!vfBase::replaceFile("picture.png", contents, reason))
///         std::cerr << "picture.png: " << reason << '\n';
///
/// Writes the contents to a draft in the same directory, flushes it, and renames it to @p path. A program
/// that is killed leaves the former file as it was; the next call for that path removes its draft. Several
/// threads and programs may replace one file at the same time: the last one wins, as a whole.
///
/// Of a file that exists, the permissions, owner, group, access list and extended attributes are kept. Where
/// the system does not let this user keep the owner, the file becomes this user's; where it does not let the
/// group or the access list be kept, the new file grants less access, never more. The bits set-user-ID and
/// set-group-ID are dropped. Symbolic links stay, and the file that they lead to is replaced. Other hard
/// links to the file keep the former contents. A new file gets its permissions by the umask.
///
/// A device or a FIFO is written to directly, a FIFO after waiting for its reader; so is what /dev/stdout and
/// other links to open files lead to.
/// @param path      the file; no directory, and no file without write permission for its owner
/// @param contents  the new contents
/// @param reason    set to the reason on failure, otherwise unchanged
/// @return false on failure, with an existing file unchanged. Without write permission for the directory the
///         call fails even if the file is writable
VFBASE_EXPORT bool replaceFile(const VfString& path, const std::string& contents, VfString& reason);

/// Replaces a file by another one that is complete, or leaves it unchanged: for contents that are too large for
/// memory, or that another program wrote.
///
/// Gives @p draft the permissions, owner, group, access list and extended attributes of an existing file as
/// replaceFile() does, flushes it, and renames it. Symbolic links stay, and the file that they lead to is replaced.
/// @param path    the file; no directory, device or FIFO, and no file without write permission for its owner
/// @param draft   a regular file on the same file system; it is gone afterwards
/// @param reason  set to the reason on failure, otherwise unchanged
/// @return false on failure, with both files unchanged but for the attributes of @p draft
VFBASE_EXPORT bool replaceFileBy(const VfString& path, const VfString& draft, VfString& reason);

} // namespace vfBase
