// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// Returns @p text in a form for one line of a terminal or a log, since a file name may have any byte.
///
///     vfBase::printable("a\nb")   // a\nb, four characters
///
/// @return @p text with control characters written as `\n`, `\t`, `\r` or `\xNN`, and bytes that are not
///         UTF-8 as `\xNN`
VFBASE_EXPORT VfString printable(const VfString& text);

} // namespace vfBase
