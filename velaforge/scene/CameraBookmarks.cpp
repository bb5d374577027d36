// SPDX-License-Identifier: MIT
#include <velaforge/scene/CameraBookmarks.h>

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/scene/StoredStyles.h>

#include <osg/ref_ptr>

#include <algorithm>

namespace vfScene {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

SettingsValue writeEntries(const CameraBookmarks& all)
{
    SettingsValue::List files;
    for (const CameraBookmarks::Entry& entry : all.getEntries()) {
        SettingsValue::List places;
        for (const CameraBookmark& place : entry.places)
            places.emplace_back(SettingsValue::Map{{"name", place.name},
                                                   {"camera", stored(place.camera)},
                                                   {"projection", static_cast<int>(place.projection)}});
        files.emplace_back(SettingsValue::Map{{"path", entry.path}, {"places", places}});
    }
    return files;
}

std::vector<CameraBookmark> readPlaces(const SettingsValue& value)
{
    std::vector<CameraBookmark> places;
    const SettingsValue::List* list = value.list();
    for (std::size_t i = 0; list && i < list->size() && places.size() < CameraBookmarks::mostBookmarks; ++i) {
        const SettingsValue::Map* map = (*list)[i].map();
        CameraBookmark place;
        int projection = 0;
        if (!map || !storedPart(*map, "name").read(place.name) || place.name.empty() ||
            !readStored(storedPart(*map, "camera"), place.camera))
            continue;
        if (storedPart(*map, "projection").read(projection) &&
            projection == static_cast<int>(Projection::Orthographic))
            place.projection = Projection::Orthographic;
        places.push_back(place);
    }
    return places;
}

bool takeEntries(CameraBookmarks& all, const SettingsValue& value)
{
    const SettingsValue::List* list = value.list();
    if (!list)
        return false;
    std::vector<CameraBookmarks::Entry> entries;
    for (std::size_t i = 0; i < list->size() && entries.size() < CameraBookmarks::mostFiles; ++i) {
        const SettingsValue::Map* map = (*list)[i].map();
        CameraBookmarks::Entry entry;
        if (!map || !storedPart(*map, "path").read(entry.path) || entry.path.empty())
            continue;
        entry.places = readPlaces(storedPart(*map, "places"));
        if (!entry.places.empty())
            entries.push_back(entry);
    }
    all.setEntries(entries);
    return true;
}

const SettingsProperties
    properties("vfScene::CameraBookmarks",
               {SettingsProperties::property<CameraBookmarks>("files", writeEntries, takeEntries)});

auto named(std::vector<CameraBookmark>& places, const std::string& name)
{
    return std::find_if(places.begin(), places.end(),
                        [&name](const CameraBookmark& place) { return place.name == name; });
}

} // namespace

CameraBookmarks::CameraBookmarks(const CameraBookmarks& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_entries(other.m_entries)
{}

CameraBookmarks& CameraBookmarks::instance()
{
    static const osg::ref_ptr<CameraBookmarks> places = new CameraBookmarks;
    return *places;
}

std::vector<CameraBookmark> CameraBookmarks::of(const std::string& path) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&path](const Entry& entry) { return entry.path == path; });
    return found == m_entries.end() ? std::vector<CameraBookmark>() : found->places;
}

CameraBookmarks::Entry CameraBookmarks::takeOut(const std::string& path)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&path](const Entry& entry) { return entry.path == path; });
    if (found == m_entries.end())
        return {path, {}};
    Entry entry = std::move(*found);
    m_entries.erase(found);
    return entry;
}

void CameraBookmarks::putBack(const Entry& entry)
{
    if (entry.places.empty())
        return;
    if (m_entries.size() >= mostFiles)
        m_entries.erase(m_entries.begin());
    m_entries.push_back(entry);
}

bool CameraBookmarks::keep(const std::string& path, const CameraBookmark& place)
{
    if (place.name.size() > longestName)
        return false;
    Entry entry = takeOut(path);
    const auto same = named(entry.places, place.name);
    const bool isKept = same != entry.places.end() || entry.places.size() < mostBookmarks;
    if (same != entry.places.end())
        *same = place;
    else if (isKept)
        entry.places.push_back(place);
    putBack(entry);
    return isKept;
}

bool CameraBookmarks::forget(const std::string& path, const std::string& name)
{
    Entry entry = takeOut(path);
    const auto found = named(entry.places, name);
    const bool isThere = found != entry.places.end();
    if (isThere)
        entry.places.erase(found);
    putBack(entry);
    return isThere;
}

} // namespace vfScene
