// SPDX-License-Identifier: MIT
#pragma once

#include "model/StandardView.h"

#include <velaforge/base/SettingsObjectPrivate.h>

#include <string>
#include <vector>

namespace vfViewer {

/// A camera to come back to.
struct CameraPlace
{
    std::string name;
    LookAt camera;
    Projection projection = Projection::Perspective;
};

/// The cameras that users keep, for each file. Kept with all other settings; the files themselves are left alone.
class CameraPlaces : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfViewer, CameraPlaces)

        /// The places of a file.
        struct Entry
    {
        std::string path;
        std::vector<CameraPlace> places;
    };

    /// Most files that are remembered; the one whose places were changed longest ago is forgotten for another.
    static constexpr std::size_t mostFiles = 200;

    /// Most places that a file can have.
    static constexpr std::size_t mostPlaces = 100;

    /// Most bytes that the name of a place can have.
    static constexpr std::size_t longestName = 200;

    CameraPlaces() = default;
    CameraPlaces(const CameraPlaces& other, const osg::CopyOp& copyop);

    /// @return the one object, known to the store
    static CameraPlaces& instance();

    /// @return the places of a file, in the order in which they were kept first
    std::vector<CameraPlace> of(const std::string& path) const;

    /// Keeps a place, instead of another of that name. @return false when the file has as many as it can have, or the
    ///         name is longer than longestName
    bool keep(const std::string& path, const CameraPlace& place);

    /// @return false when there is none of that name
    bool forget(const std::string& path, const std::string& name);

    /// For the store. The one that was changed last is the last.
    const std::vector<Entry>& getEntries() const { return m_entries; }
    void setEntries(const std::vector<Entry>& entries) { m_entries = entries; }

protected:
    ~CameraPlaces() override = default;

private:
    Entry takeOut(const std::string& path);
    void putBack(const Entry& entry);

    std::vector<Entry> m_entries;
};

} // namespace vfViewer
