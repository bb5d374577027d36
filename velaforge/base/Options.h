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
/// A handle: copies and assignment share the body, clone() makes one of its own. On an invalid handle setting
/// a key does nothing, and every value is empty.
class VFBASE_EXPORT Options : public Referenced
{
public:
    /// Valid options without keys.
    Options();

    /// A handle on @p options, counted: setting a key here changes that object. Null gives an invalid handle.
    Options(const osgDB::Options* options);

    /// A handle on the other's body if that is an osgDB::Options, otherwise an invalid one.
    explicit Options(const Referenced& other);

    /// Shares the other's body.
    Options(const Options& other) = default;

    /// Shares the other's body. Assigning to the shared invalid() handle does nothing.
    Options& operator=(const Options& other);

    /// Takes over the other's body if that is an osgDB::Options; otherwise the handle becomes invalid.
    void setImp(const Referenced& other) override;

    /// @return a copy with a body of its own; a clone of invalid options is invalid
    Options clone() const;

    /// @return the shared invalid options, the default argument of operations that take options
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
