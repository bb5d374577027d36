// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Opens /dev/null on each of the descriptors 0, 1 and 2 that is closed. Call it first of all in main().
///
///     int main(int argc, char** argv)
///     {
///         vfBase::openStandardDescriptors();
///         ...
///
/// A program that is started with a closed standard stream would otherwise get that number for the next file
/// or socket that it opens, and write its messages there or wait for input from it. Descriptors that are open
/// stay as they are.
/// @return false when /dev/null cannot be opened; a descriptor that was closed then stays closed
VFBASE_EXPORT bool openStandardDescriptors();

} // namespace vfBase
