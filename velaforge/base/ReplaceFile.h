// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

#include <string>

namespace vfBase {

/// Writes a file whole or not at all.
///
///     vfBase::VfString reason;
///     if (!vfBase::replaceFile("picture.png", contents, reason))
///         std::cerr << "picture.png: " << reason << '\n';
///
/// The contents go to a new file in the same directory, which is flushed and then takes the place of what was there;
/// a link to the file stays a link, and the permissions of a file that was there stay. What is no regular file, as a
/// device or a FIFO, is written to directly.
/// @param reason  gets the reason of a failure in words
/// @return false when that could not be finished; a file that was there is then as it was
VFBASE_EXPORT bool replaceFile(const VfString& path, const std::string& contents, VfString& reason);

} // namespace vfBase
