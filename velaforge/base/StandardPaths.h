// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

namespace vfBase {

/// Returns the directories of the user, by the XDG rules for base directories and user directories.
///
///     vfBase::StandardPaths::standardLocation(vfBase::StandardPaths::Documents);
class VFBASE_EXPORT StandardPaths
{
public:
    /// The locations, numbered as in the binary interface.
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

    /// Returns the directory of @p location, which need not exist. LocalData, ApplicationData and Cache end
    /// in the vendor's short name and the application name of ApplicationInfo; the others belong to all
    /// programs of the user. Reads the environment at each call.
    /// @return an absolute path without a slash at the end, valid until the process ends; never null, empty
    ///         for an unknown location
    static const char* standardLocation(StandardLocation location);
};

} // namespace vfBase
