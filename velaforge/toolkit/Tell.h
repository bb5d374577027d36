// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

namespace vfApplication {

/// Writes one line to standard error: the name of the application, the subject, the reason.
/// @param subject  a file, a command, or file and line of a script
/// @param reason   what happened
/// @return false
bool tell(const vfBase::VfString& subject, const vfBase::VfString& reason);

} // namespace vfApplication
