// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/VfString.h>

namespace vfApplication {

/// Writes one line to standard error: the name of the program, the subject, the reason.
/// @param subject  a file, a command, a place in a script
/// @return false
bool tell(const vfBase::VfString& subject, const vfBase::VfString& reason);

} // namespace vfApplication
