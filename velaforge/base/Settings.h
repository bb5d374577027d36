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
/// The file of the global store is `<configuration directory>/<vendor short name>/<application name>.json`. It has
/// a format number and an entry for each object under "libraryName::className".
///
/// Nothing is lost. A save replaces the file as a whole, or leaves it as it was and returns false; the generation
/// before it stays beside it under ".previous". A damaged file is set aside under a name of its own, and the last good
/// generation is taken in its place. Entries and keys that this program does not know come back out as they went in.
/// When two programs save at once, each keeps what the other has changed: maps merge by key, lists of texts or objects by
/// element (docs/settings.md has the rules). Problems are reported through osg::notify.
///
/// A handle: copies share the store.
class VFBASE_EXPORT Settings : public Referenced
{
public:
    /// A store of its own, without objects, in that file.
    explicit Settings(const VfString& path);

    Settings(const Settings& other) = default;
    Settings& operator=(const Settings& other);
    void setImp(const Referenced& other) override;

    /// @return the store of the process; usable during static initialisation of any library
    static Settings& global();

    /// Reads the user's settings file into the global store and its objects. @return a handle on it
    static Settings loadGlobal();

    /// Reads the file into the objects. Values of a wrong type are told and leave the object's as it was.
    /// @return true when a whole file was read, also when that was the generation before; false when there is none
    ///         and the objects stay as they were
    bool load();

    /// Writes all registered objects.
    /// @param path  null for the store's own file, whose missing directories are made; any other path gets the
    ///              whole contents, in a directory that must exist
    /// @return false, with the file as it was, when that could not be finished
    bool save(const char* path);

    /// @return the path of the store's own file; the text stays valid until the process ends. The path of the global store
    ///         changes with the application's name and vendor, and then each path has a text of its own
    const char* getSettingsFilePath() const;

    /// Makes an object known to the store, in place of one with the same names. See RegisterSettingsObjectProxy.
    void add(const SettingsObject& object);

    SettingsPrivate* getImp() const { return d; }

private:
    explicit Settings(SettingsPrivate* body);

    SettingsPrivate* d;
};

} // namespace vfBase
