// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

/// Finds the directory of a library at run time, so that what was installed beside it is found wherever the whole was put.
/// @param address  of a function that the library or the executable defines
/// @return the directory of that file, absolute and with links resolved, without a slash at its end; empty when no loaded
///         file holds @p address, or the file does not exist any more
VFBASE_EXPORT VfString libraryFolder(const void* address);

/// Returns the same for a function, for example `libraryFolder(&createFilter)`.
template <typename Result, typename... Arguments>
VfString libraryFolder(Result (*function)(Arguments...))
{
    return libraryFolder(reinterpret_cast<const void*>(function));
}

} // namespace vfBase
