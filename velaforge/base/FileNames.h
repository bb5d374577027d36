// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// Returns the directory part of a path, without the file name; empty if there is none.
VFBASE_EXPORT VfString getFilePath(const VfString& path);

/// Returns the last component of a path.
VFBASE_EXPORT VfString getSimpleFileName(const VfString& path);

/// Returns the path, directories included, without the extension of its last component.
VFBASE_EXPORT VfString getNameLessExtension(const VfString& path);

/// Makes a path absolute and lexically normal, so that "a.pts" and "./b/../a.pts" are one text. Links are not
/// resolved and the file need not exist.
/// @return the path below the current directory, without "." and ".."; @p path as it is when it is empty, has
///         a scheme ("https://host/a.pts"), or there is no current directory
VFBASE_EXPORT VfString absolutePath(const VfString& path);

/// Makes one component of a path from any text.
/// @return @p name with slashes and zero bytes replaced by "_"; "." and ".." become "_" and "__"
VFBASE_EXPORT VfString makePathComponent(const VfString& name);

/// Returns whether @p path names an existing directory, also through a link; false for an empty path, for
/// one with a zero byte, and for one that cannot be examined.
VFBASE_EXPORT bool directoryExists(const VfString& path);

} // namespace vfBase
