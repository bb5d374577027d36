// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/scene/Export.h>
#include <velaforge/scene/StandardView.h>

#include <string>
#include <vector>

namespace vfScene {

/// A stored camera.
struct CameraBookmark
{
    std::string name;                                ///< unique among those of a file
    LookAt camera;                                   ///< position and orientation
    Projection projection = Projection::Perspective; ///< its projection
};

/// The camera bookmarks of files, as an object of the settings store; the files themselves do not change.
///
/// A program that keeps bookmarks registers the object in one of its sources:
///
///     const vfBase::RegisterSettingsObjectProxy registered(
///         vfBase::SettingsObject(&vfScene::CameraBookmarks::instance()), vfBase::Settings::global());
class VFSCENE_EXPORT CameraBookmarks : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfScene, CameraBookmarks)

        /// The bookmarks of a file.
        struct Entry
    {
        std::string path;                   ///< of the file, absolute
        std::vector<CameraBookmark> places; ///< in the order in which they were first kept
    };

    /// The largest number of files with bookmarks. Above it those are forgotten that have not changed for the longest time.
    static constexpr std::size_t mostFiles = 200;
    /// The largest number of bookmarks of a file.
    static constexpr std::size_t mostBookmarks = 100;
    /// The largest length of a name in bytes.
    static constexpr std::size_t longestName = 200;

    CameraBookmarks() = default;
    /// Copies the entries of another object.
    CameraBookmarks(const CameraBookmarks& other, const osg::CopyOp& copyop);

    /// Returns the object of the program.
    static CameraBookmarks& instance();

    /// Returns the bookmarks of a file, in the order in which they were first kept.
    std::vector<CameraBookmark> of(const std::string& path) const;

    /// Adds a bookmark to those of a file, or replaces the one of that name.
    /// @param path   of the file, absolute
    /// @param place  the bookmark
    /// @return false when the file has #mostBookmarks or the name is longer than #longestName
    bool keep(const std::string& path, const CameraBookmark& place);

    /// Removes a bookmark of a file.
    /// @param path  of the file
    /// @param name  of the bookmark
    /// @return false when there is none of that name
    bool forget(const std::string& path, const std::string& name);

    /// Returns all entries, the one that changed last at the end. For the store.
    const std::vector<Entry>& getEntries() const { return m_entries; }
    /// Replaces all entries. For the store.
    void setEntries(const std::vector<Entry>& entries) { m_entries = entries; }

protected:
    ~CameraBookmarks() override = default;

private:
    Entry takeOut(const std::string& path);
    void putBack(const Entry& entry);

    std::vector<Entry> m_entries;
};

} // namespace vfScene
