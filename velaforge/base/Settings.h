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
/// A save replaces the file as a whole, or leaves it unchanged and returns false. The previous generation of
/// the file stays beside it, with the extension ".previous". A damaged file is renamed, and the previous
/// generation is loaded instead. Entries and keys that this program does not know are saved unchanged. If two
/// programs save at the same time, each keeps the changes of the other: maps merge by key, lists of texts or
/// objects by element (docs/settings.md has the rules). Problems are reported through osg::notify.
///
/// A handle: copies share the store.
class VFBASE_EXPORT Settings : public Referenced
{
public:
    /// Makes a store without objects for the file @p path.
    explicit Settings(const VfString& path);

    /// Shares the store of @p other.
    Settings(const Settings& other) = default;

    /// Shares the store of @p other.
    Settings& operator=(const Settings& other);
    void setImp(const Referenced& other) override;

    /// Returns the store of the process. Usable during static initialisation of any library.
    static Settings& global();

    /// Reads the user's settings file into the global store and its objects.
    /// @return a handle on the global store
    static Settings loadGlobal();

    /// Reads the file into the objects. Reports a value of a wrong type and leaves that of the object
    /// unchanged.
    /// @return true if the file or its previous generation was read; false, with the objects unchanged, if
    ///         there is none
    bool load();

    /// Writes all registered objects to a file.
    /// @param path  the file, in an existing directory; null for the store's own file, whose missing
    ///              directories are made
    /// @return false, with the file unchanged, if it could not be written
    bool save(const char* path);

    /// Returns the path of the store's own file. The pointer is valid until the process ends; if the path of
    /// the global store changes with the application's name or vendor, earlier pointers keep their text.
    const char* getSettingsFilePath() const;

    /// Registers @p object, in place of one with the same library and class name. See
    /// RegisterSettingsObjectProxy.
    void add(const SettingsObject& object);

    /// Returns the body, null if there is none.
    SettingsPrivate* getImp() const { return d; }

private:
    explicit Settings(SettingsPrivate* body);

    SettingsPrivate* d;
};

} // namespace vfBase
