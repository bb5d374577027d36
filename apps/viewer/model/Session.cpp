// SPDX-License-Identifier: MIT
#include "model/Session.h"

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

#include <cmath>

namespace vfViewer {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

/// More than a user opens, fewer than a damaged file could name.
constexpr std::size_t mostEntries = 100;

struct Switch
{
    const char* name;
    bool ViewStyle::*member;
};

constexpr Switch switches[] = {{"flat", &ViewStyle::isFlat},
                               {"culling", &ViewStyle::cullsBackFaces},
                               {"textures", &ViewStyle::showsTextures},
                               {"vertexColors", &ViewStyle::showsVertexColors},
                               {"grid", &ViewStyle::showsGrid},
                               {"axes", &ViewStyle::showsAxes},
                               {"boxes", &ViewStyle::showsBoxes},
                               {"antialiasing", &ViewStyle::isAntialiased},
                               {"headlight", &ViewStyle::lightFollowsCamera}};

const SettingsValue& valueOf(const SettingsValue::Map& map, const char* name)
{
    static const SettingsValue none;
    const auto found = map.find(name);
    return found == map.end() ? none : found->second;
}

template <class Vector>
SettingsValue write(const Vector& vector)
{
    return SettingsValue::List{static_cast<double>(vector[0]), static_cast<double>(vector[1]),
                               static_cast<double>(vector[2])};
}

template <class Vector>
bool read(const SettingsValue& value, Vector& vector)
{
    const SettingsValue::List* parts = value.list();
    if (!parts || parts->size() != 3)
        return false;
    Vector found;
    for (int i = 0; i < 3; ++i) {
        if (!(*parts)[static_cast<std::size_t>(i)].read(found[i]) || !std::isfinite(found[i]))
            return false;
    }
    vector = found;
    return true;
}

SettingsValue write(const ViewStyle& style)
{
    SettingsValue::Map map = {{"projection", static_cast<int>(style.projection)},
                              {"drawMode", static_cast<int>(style.drawMode)}};
    for (const Switch& one : switches)
        map[one.name] = style.*one.member;
    if (style.background) {
        map["backgroundTop"] = write(style.background->top);
        map["backgroundBottom"] = write(style.background->bottom);
    }
    SettingsValue::List sections;
    for (const SectionPlane& section : style.sections)
        sections.emplace_back(SettingsValue::List{section.isOn, section.position, section.isFlipped});
    map["sections"] = sections;
    return map;
}

/// What is missing or makes no sense is as it is by default.
ViewStyle readStyle(const SettingsValue& value)
{
    ViewStyle style;
    const SettingsValue::Map* map = value.map();
    if (!map)
        return style;
    int number = 0;
    if (valueOf(*map, "projection").read(number) && number == static_cast<int>(Projection::Orthographic))
        style.projection = Projection::Orthographic;
    if (valueOf(*map, "drawMode").read(number) && number >= 0 && number <= static_cast<int>(DrawMode::Points))
        style.drawMode = static_cast<DrawMode>(number);
    for (const Switch& one : switches)
        valueOf(*map, one.name).read(style.*one.member);
    Background background;
    if (read(valueOf(*map, "backgroundTop"), background.top) &&
        read(valueOf(*map, "backgroundBottom"), background.bottom))
        style.background = background;
    const SettingsValue::List* sections = valueOf(*map, "sections").list();
    for (std::size_t i = 0; sections && sections->size() == 3 && i < 3; ++i) {
        const SettingsValue::List* parts = (*sections)[i].list();
        SectionPlane section;
        if (parts && parts->size() == 3 && (*parts)[0].read(section.isOn) &&
            (*parts)[1].read(section.position) && (*parts)[2].read(section.isFlipped) &&
            section.position >= 0 && section.position <= 1)
            style.sections[i] = section;
    }
    return style;
}

SettingsValue writeEntries(const Session& session)
{
    SettingsValue::List list;
    for (const Session::Entry& entry : session.getEntries())
        list.emplace_back(SettingsValue::Map{{"path", entry.path},
                                             {"eye", write(entry.camera.eye)},
                                             {"centre", write(entry.camera.centre)},
                                             {"up", write(entry.camera.up)},
                                             {"style", write(entry.style)}});
    return list;
}

bool takeEntries(Session& session, const SettingsValue& value)
{
    const SettingsValue::List* list = value.list();
    if (!list)
        return false;
    std::vector<Session::Entry> entries;
    for (const SettingsValue& one : *list) {
        const SettingsValue::Map* map = one.map();
        Session::Entry entry;
        if (!map || entries.size() == mostEntries || !valueOf(*map, "path").read(entry.path) ||
            entry.path.empty() || !read(valueOf(*map, "eye"), entry.camera.eye) ||
            !read(valueOf(*map, "centre"), entry.camera.centre) ||
            !read(valueOf(*map, "up"), entry.camera.up))
            continue;
        entry.style = readStyle(valueOf(*map, "style"));
        entries.push_back(entry);
    }
    session.setEntries(entries);
    return true;
}

const SettingsProperties
    properties("vfViewer::Session",
               {SettingsProperties::property("restored", &Session::isRestored, &Session::setRestored),
                SettingsProperties::property<Session>("documents", writeEntries, takeEntries)});

const vfBase::RegisterSettingsObjectProxy registered(vfBase::SettingsObject(&Session::instance()),
                                                     vfBase::Settings::global());

} // namespace

Session::Session(const Session& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop), m_isRestored(other.m_isRestored), m_entries(other.m_entries)
{}

Session& Session::instance()
{
    static const osg::ref_ptr<Session> session = new Session;
    return *session;
}

} // namespace vfViewer
