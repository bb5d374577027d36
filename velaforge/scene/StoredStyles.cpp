// SPDX-License-Identifier: MIT
#include <velaforge/scene/StoredStyles.h>

#include <cmath>

namespace vfScene {

using vfBase::SettingsValue;

namespace {

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
                               {"headlight", &ViewStyle::lightFollowsCamera},
                               {"fileLamps", &ViewStyle::usesFileLamps}};

template <class Vector>
SettingsValue storedVector(const Vector& vector)
{
    return SettingsValue::List{static_cast<double>(vector[0]), static_cast<double>(vector[1]),
                               static_cast<double>(vector[2])};
}

template <class Vector>
bool readVector(const SettingsValue& value, Vector& vector)
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

} // namespace

const SettingsValue& storedPart(const SettingsValue::Map& map, const char* name)
{
    static const SettingsValue none;
    const auto found = map.find(name);
    return found == map.end() ? none : found->second;
}

SettingsValue stored(const osg::Vec3f& vector)
{
    return storedVector(vector);
}

SettingsValue stored(const LookAt& camera)
{
    return SettingsValue::Map{{"eye", storedVector(camera.eye)},
                              {"centre", storedVector(camera.centre)},
                              {"up", storedVector(camera.up)}};
}

SettingsValue stored(const ViewStyle& style)
{
    SettingsValue::Map map = {{"projection", static_cast<int>(style.projection)},
                              {"drawMode", static_cast<int>(style.drawMode)}};
    for (const Switch& one : switches)
        map[one.name] = style.*one.member;
    if (style.background) {
        map["backgroundTop"] = stored(style.background->top);
        map["backgroundBottom"] = stored(style.background->bottom);
    }
    SettingsValue::List sections;
    for (const SectionPlane& section : style.sections)
        sections.emplace_back(SettingsValue::List{section.isOn, section.position, section.isFlipped});
    map["sections"] = sections;
    return map;
}

bool readStored(const SettingsValue& value, osg::Vec3f& vector)
{
    return readVector(value, vector);
}

bool readStored(const SettingsValue& value, LookAt& camera)
{
    const SettingsValue::Map* map = value.map();
    LookAt read;
    if (!map || !readVector(storedPart(*map, "eye"), read.eye) ||
        !readVector(storedPart(*map, "centre"), read.centre) || !readVector(storedPart(*map, "up"), read.up))
        return false;
    camera = read;
    return true;
}

bool readStored(const SettingsValue& value, ViewStyle& style)
{
    const SettingsValue::Map* map = value.map();
    if (!map)
        return false;
    int number = 0;
    if (storedPart(*map, "projection").read(number) && number >= 0 &&
        number <= static_cast<int>(Projection::Orthographic))
        style.projection = static_cast<Projection>(number);
    if (storedPart(*map, "drawMode").read(number) && number >= 0 &&
        number <= static_cast<int>(DrawMode::Points))
        style.drawMode = static_cast<DrawMode>(number);
    for (const Switch& one : switches)
        storedPart(*map, one.name).read(style.*one.member);
    Background background;
    if (readStored(storedPart(*map, "backgroundTop"), background.top) &&
        readStored(storedPart(*map, "backgroundBottom"), background.bottom))
        style.background = background;
    const SettingsValue::List* sections = storedPart(*map, "sections").list();
    for (std::size_t i = 0; sections && sections->size() == 3 && i < 3; ++i) {
        const SettingsValue::List* parts = (*sections)[i].list();
        SectionPlane section;
        if (parts && parts->size() == 3 && (*parts)[0].read(section.isOn) &&
            (*parts)[1].read(section.position) && (*parts)[2].read(section.isFlipped) &&
            section.position >= 0 && section.position <= 1)
            style.sections[i] = section;
    }
    return true;
}

} // namespace vfScene
