// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>

#include <osgDB/Options>

namespace vfBase {

/// Keys and values that travel with a document operation, on the plug-in string data of an osgDB::Options.
///
///     vfBase::Options options;
///     options.setPluginStringData("SILENT", "TRUE");
///     vfBase::Options own = options.clone();  // keys set on it are not seen through options
///
/// A handle: copies and assignment share the body, clone() makes one of its own. An invalid handle
/// takes no key and gives empty values.
class VFBASE_EXPORT Options : public Referenced
{
public:
    /// Valid, without keys.
    Options();

    /// A handle on that object, whose keys this one then changes; null gives an invalid handle.
    Options(const osgDB::Options* options);

    /// A handle on the other's body if that is an osgDB::Options, otherwise an invalid one.
    explicit Options(const Referenced& other);

    Options(const Options& other) = default;

    /// Shares the other's body. The shared invalid() handle stays as it is.
    Options& operator=(const Options& other);

    void setImp(const Referenced& other) override;

    /// @return a copy with a body of its own; a clone of invalid options is invalid
    Options clone() const;

    /// @return the shared invalid options: the answer, and the default argument, where there are none
    static Options& invalid();

    /// Sets a key, replacing an earlier value. Does nothing on invalid options.
    void setPluginStringData(const VfString& key, const VfString& value);

    /// @return the value; empty when the key is not set, and on invalid options
    VfString getPluginStringData(const VfString& key) const;

    /// @return the body, null for invalid options
    osgDB::Options* getImp() const { return d; }

private:
    osgDB::Options* d;
};

} // namespace vfBase
