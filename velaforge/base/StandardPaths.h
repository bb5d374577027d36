// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Where the files of a user go, by the rules for base directories and user directories of free desktops.
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

    /// LocalData, ApplicationData and Cache lie below a directory named by the vendor's short name and the name of
    /// ApplicationInfo, all others are the user's own. The directory need not exist.
    /// @return an absolute path without a slash at the end; never null, empty for an unknown location. Valid for the
    ///         whole process. Asked anew each time, so that a changed environment counts.
    static const char* standardLocation(StandardLocation location);
};

} // namespace vfBase
