// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// The directories of the user, by the XDG base directory and user directory rules.
///
///     vfBase::StandardPaths::standardLocation(vfBase::StandardPaths::Documents);
class VFBASE_EXPORT StandardPaths
{
public:
    enum StandardLocation : int
    {
        Desktop = 0,
        Documents = 1,
        Fonts = 2,
        Applications = 3,
        Music = 4,
        Movies = 5,
        Pictures = 6,
        Temp = 7,
        Home = 8,
        LocalData = 9,
        Cache = 10,
        GenericData = 11,
        Runtime = 12,
        Config = 13,
        Download = 14,
        GenericCache = 15,
        GenericConfig = 16,
        ApplicationData = 17
    };

    /// Finds a directory, which need not exist. LocalData, ApplicationData and Cache end with the vendor's
    /// short name and the program's name of ApplicationInfo; the others are shared by all programs. Each call
    /// reads the environment again.
    /// @return an absolute path without a slash at the end; empty for an unknown location, never null. The
    ///         text stays valid until the process ends
    static const char* standardLocation(StandardLocation location);
};

} // namespace vfBase
