// SPDX-License-Identifier: MIT
#include "model/ViewerSettings.h"

#include <velaforge/base/RegisterSettingsObjectProxy.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/SettingsObject.h>
#include <velaforge/base/SettingsProperties.h>
#include <velaforge/documents/Session.h>
#include <velaforge/scene/CameraBookmarks.h>
#include <velaforge/scene/StoredStyles.h>

#include <osg/ref_ptr>

#include <algorithm>
#include <string>

namespace vfViewer {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

bool readColor(const SettingsValue& value, osg::Vec3f& color)
{
    if (!vfScene::readStored(value, color))
        return false;
    for (int i = 0; i < 3; ++i) {
        if (color[i] < 0 || color[i] > 1)
            return false;
    }
    return true;
}

bool takeFirstView(ViewerSettings& settings, const SettingsValue& value)
{
    int view = -1;
    if (!value.read(view) || view < 0 || view >= vfScene::standardViewCount)
        return false;
    settings.setFirstView(view);
    return true;
}

bool takeTop(ViewerSettings& settings, const SettingsValue& value)
{
    osg::Vec3f color;
    if (!readColor(value, color))
        return false;
    settings.setBackground(color, settings.getBackgroundBottom());
    return true;
}

bool takeBottom(ViewerSettings& settings, const SettingsValue& value)
{
    osg::Vec3f color;
    if (!readColor(value, color))
        return false;
    settings.setBackground(settings.getBackgroundTop(), color);
    return true;
}

std::string nameOf(vfScene::LengthUnit unit)
{
    return unit == vfScene::LengthUnit::None ? "none" : vfScene::symbolOf(unit);
}

bool readUnit(const SettingsValue& value, vfScene::LengthUnit& unit)
{
    std::string symbol;
    const std::optional<vfScene::LengthUnit> found =
        value.read(symbol) ? vfScene::unitOf(symbol) : std::nullopt;
    unit = found.value_or(unit);
    return found.has_value();
}

bool takeModelUnit(ViewerSettings& settings, const SettingsValue& value)
{
    vfScene::Units units = settings.getUnits();
    const bool isUnit = readUnit(value, units.ofModel);
    settings.setUnits(units);
    return isUnit;
}

bool takeShownUnit(ViewerSettings& settings, const SettingsValue& value)
{
    vfScene::Units units = settings.getUnits();
    const bool isUnit = readUnit(value, units.shown);
    settings.setUnits(units);
    return isUnit;
}

bool takeFirstStyle(ViewerSettings& settings, const SettingsValue& value)
{
    vfScene::ViewStyle style;
    if (!vfScene::readStored(value, style))
        return false;
    settings.setFirstStyle(style);
    return true;
}

bool takeHistoryMegabytes(ViewerSettings& settings, const SettingsValue& value)
{
    int megabytes = 0;
    if (!value.read(megabytes) || megabytes < 1)
        return false;
    settings.setHistoryMegabytes(megabytes);
    return true;
}

bool takeTrackball(ViewerSettings& settings, const SettingsValue& value)
{
    MouseSettings mouse = settings.getMouse();
    const bool isTaken = value.read(mouse.isTrackball);
    settings.setMouse(mouse);
    return isTaken;
}

bool takeOrbitPercent(ViewerSettings& settings, const SettingsValue& value)
{
    MouseSettings mouse = settings.getMouse();
    const bool isTaken = value.read(mouse.orbitPercent) && mouse.orbitPercent >= MouseSettings::slowest &&
                         mouse.orbitPercent <= MouseSettings::fastest;
    if (isTaken)
        settings.setMouse(mouse);
    return isTaken;
}

const SettingsProperties properties(
    "vfViewer::ViewerSettings",
    {SettingsProperties::property<ViewerSettings>(
         "firstView", [](const ViewerSettings& settings) { return settings.getFirstView(); }, takeFirstView),
     SettingsProperties::property<ViewerSettings>(
         "backgroundTop",
         [](const ViewerSettings& settings) { return vfScene::stored(settings.getBackgroundTop()); },
         takeTop),
     SettingsProperties::property<ViewerSettings>(
         "backgroundBottom",
         [](const ViewerSettings& settings) { return vfScene::stored(settings.getBackgroundBottom()); },
         takeBottom),
     SettingsProperties::property<ViewerSettings>(
         "firstStyle",
         [](const ViewerSettings& settings) { return vfScene::stored(settings.getFirstStyle()); },
         takeFirstStyle),
     SettingsProperties::property<ViewerSettings>(
         "modelUnit", [](const ViewerSettings& settings) { return nameOf(settings.getUnits().ofModel); },
         takeModelUnit),
     SettingsProperties::property<ViewerSettings>(
         "shownUnit", [](const ViewerSettings& settings) { return nameOf(settings.getUnits().shown); },
         takeShownUnit),
     SettingsProperties::property<ViewerSettings>(
         "historyMegabytes", [](const ViewerSettings& settings) { return settings.getHistoryMegabytes(); },
         takeHistoryMegabytes),
     SettingsProperties::property<ViewerSettings>(
         "trackball", [](const ViewerSettings& settings) { return settings.getMouse().isTrackball; },
         takeTrackball),
     SettingsProperties::property<ViewerSettings>(
         "orbitPercent", [](const ViewerSettings& settings) { return settings.getMouse().orbitPercent; },
         takeOrbitPercent)});

const vfBase::RegisterSettingsObjectProxy registered(vfBase::SettingsObject(&ViewerSettings::instance()),
                                                     vfBase::Settings::global());
const vfBase::RegisterSettingsObjectProxy session(vfBase::SettingsObject(&vfApplication::Session::instance()),
                                                  vfBase::Settings::global());
const vfBase::RegisterSettingsObjectProxy
    bookmarks(vfBase::SettingsObject(&vfScene::CameraBookmarks::instance()), vfBase::Settings::global());

} // namespace

ViewerSettings::ViewerSettings(const ViewerSettings& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop),
      m_firstView(other.m_firstView),
      m_firstStyle(other.m_firstStyle),
      m_units(other.m_units),
      m_historyMegabytes(other.m_historyMegabytes),
      m_mouse(other.m_mouse),
      m_background(other.m_background)
{}

ViewerSettings& ViewerSettings::instance()
{
    static const osg::ref_ptr<ViewerSettings> settings = new ViewerSettings;
    return *settings;
}

void ViewerSettings::setFirstView(int view)
{
    if (view >= 0 && view < vfScene::standardViewCount)
        m_firstView = view;
}

void ViewerSettings::setFirstStyle(const vfScene::ViewStyle& style)
{
    m_firstStyle = style;
    m_firstStyle.background.reset();
    m_firstStyle.sections = {};
}

void ViewerSettings::setHistoryMegabytes(int megabytes)
{
    if (megabytes >= 1)
        m_historyMegabytes = megabytes;
}

void ViewerSettings::setMouse(const MouseSettings& mouse)
{
    m_mouse = mouse;
    m_mouse.orbitPercent = std::clamp(mouse.orbitPercent, MouseSettings::slowest, MouseSettings::fastest);
}

void ViewerSettings::setBackground(const osg::Vec3f& top, const osg::Vec3f& bottom)
{
    m_background.top = top;
    m_background.bottom = bottom;
}

} // namespace vfViewer
