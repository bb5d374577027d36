// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>

namespace osgDB {
class Options;
}

namespace vfBase {

/// The options of a document operation: keys and values, stored in the plug-in string data of an
/// osgDB::Options.
///
///     vfBase::Options options;
///     options.setPluginStringData("SILENT", "TRUE");
///     vfBase::Options own = options.clone();    // setting keys of own does not change options
///
/// A handle: copies and assignment share the body, clone() copies it. On an invalid handle, setting has no
/// effect and values are empty.
class VFBASE_EXPORT Options : public Referenced
{
public:
    /// Makes valid options without keys.
    Options();

    /// Makes a handle on @p options, which it references: setting a key changes that object. Null gives an invalid handle.
    Options(const osgDB::Options* options);

    /// Makes a handle on the body of @p other; an invalid one if that is no osgDB::Options.
    explicit Options(const Referenced& other);

    /// Shares the body of @p other.
    Options(const Options& other) = default;

    /// Shares the body of @p other. Does nothing if this is the shared invalid() handle.
    Options& operator=(const Options& other);

    void setImp(const Referenced& other) override;

    /// Returns a copy with a body of its own; the copy of invalid options is invalid.
    Options clone() const;

    /// Returns the shared invalid options, used where there are none and as a default argument.
    static Options& invalid();

    /// Sets the key @p key to @p value. Does nothing on invalid options.
    void setPluginStringData(const VfString& key, const VfString& value);

    /// Returns the value of @p key; empty if the key is not set, and on invalid options.
    VfString getPluginStringData(const VfString& key) const;

    /// Returns the body, null for invalid options.
    osgDB::Options* getImp() const { return d; }

private:
    osgDB::Options* d;
};

} // namespace vfBase
