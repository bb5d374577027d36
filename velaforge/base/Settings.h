// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>
#include <velaforge/base/Referenced.h>
#include <velaforge/base/VfString.h>

namespace vfBase {

class SettingsObject;
class SettingsPrivate;

/// A store of settings objects in one JSON file that a person can read and edit.
///
///     vfBase::Settings::loadGlobal();
///     vfApplication::ApplicationSettings::instance(false)->setWorkingLocation("/models");
///     vfBase::Settings::global().save(nullptr);
///
/// The file of the global store is `<configuration directory>/<vendor short name>/<application name>.json`.
/// It has a format number and an entry for each object under "libraryName::className".
///
/// Nothing is lost. A save replaces the file as a whole, or leaves it as it was and returns false; the former
/// generation is kept beside it as ".previous". A damaged file is kept under a name of its own, and the last
/// good generation is used instead. Entries and keys that this program does not know are written back
/// unchanged. When two programs save at once, each keeps what the other has changed: maps merge by key, lists
/// of texts or objects by element (docs/settings.md has the rules). Problems are reported through
/// osg::notify.
///
/// A handle: copies share the store.
class VFBASE_EXPORT Settings : public Referenced
{
public:
    /// A store of its own, without objects, in that file.
    explicit Settings(const VfString& path);

    /// Shares the other's store.
    Settings(const Settings& other) = default;

    /// Shares the other's store instead of the former one.
    Settings& operator=(const Settings& other);

    /// Shares the other's store if it is one; otherwise the handle becomes invalid and must not be used.
    void setImp(const Referenced& other) override;

    /// @return the store of the process; usable during static initialisation of any library
    static Settings& global();

    /// Reads the user's settings file into the global store and its objects. @return a handle on it
    static Settings loadGlobal();

    /// Reads the file into the objects. A value of the wrong type is reported and leaves the object's as it
    /// was.
    /// @return true when a whole file was read, be it the former generation; false when there is none, and
    ///         the objects stay as they were
    bool load();

    /// Writes all registered objects.
    /// @param path  null for the store's own file, whose missing directories are made; any other path gets
    ///         the whole contents, in a directory that must exist
    /// @return false, with the file as it was, when that could not be finished
    bool save(const char* path);

    /// @return the path of the store's own file; the text stays valid until the process ends. The path of the
    ///         global store changes with the application's name and vendor, and then each path has a text of
    ///         its own
    const char* getSettingsFilePath() const;

    /// Adds an object to the store, in place of one with the same names; an invalid handle is ignored. After
    /// a load the object gets its values at once. See RegisterSettingsObjectProxy.
    void add(const SettingsObject& object);

    /// @return the body, uncounted
    SettingsPrivate* getImp() const { return d; }

private:
    explicit Settings(SettingsPrivate* body);

    SettingsPrivate* d;
};

} // namespace vfBase
