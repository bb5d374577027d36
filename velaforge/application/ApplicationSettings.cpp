// SPDX-License-Identifier: MIT
#include <velaforge/application/ApplicationSettings.h>

#include <velaforge/base/SettingsProperties.h>

#include <osg/ref_ptr>

namespace vfApplication {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

SettingsValue colorValue(const ApplicationSettings& settings)
{
    const osg::Vec3f& color = settings.getSplashTextColor();
    return SettingsValue::List{static_cast<double>(color.x()), static_cast<double>(color.y()),
                               static_cast<double>(color.z())};
}

bool takeColor(ApplicationSettings& settings, const SettingsValue& value)
{
    const SettingsValue::List* components = value.list();
    osg::Vec3f color;
    if (!components || components->size() != 3 || !(*components)[0].read(color.x()) ||
        !(*components)[1].read(color.y()) || !(*components)[2].read(color.z()))
        return false;
    settings.setSplashTextColor(color);
    return true;
}

const SettingsProperties properties(
    "vfApplication::Application",
    {SettingsProperties::property("splashHorizontalAlignment",
                                  &ApplicationSettings::getSplashHorizontalAlignmet,
                                  &ApplicationSettings::setSplashHorizontalAlignmet),
     SettingsProperties::property("splashVerticalAlignment", &ApplicationSettings::getSplashVerticalAlignmet,
                                  &ApplicationSettings::setSplashVerticalAlignmet),
     SettingsProperties::property<ApplicationSettings>("splashTextColor", colorValue, takeColor),
     SettingsProperties::property("workingLocation", &ApplicationSettings::getWorkingLocation,
                                  &ApplicationSettings::setWorkingLocation)});

} // namespace

ApplicationSettings::ApplicationSettings() = default;

ApplicationSettings::ApplicationSettings(const ApplicationSettings& other, const osg::CopyOp& copyop)
    : SettingsObjectPrivate(other, copyop),
      m_splashHorizontalAlignment(other.m_splashHorizontalAlignment),
      m_splashVerticalAlignment(other.m_splashVerticalAlignment),
      m_splashTextColor(other.m_splashTextColor),
      m_workingLocation(other.m_workingLocation)
{}

ApplicationSettings::~ApplicationSettings() = default;

ApplicationSettings* ApplicationSettings::instance(bool erase)
{
    static osg::ref_ptr<ApplicationSettings> settings = new ApplicationSettings;
    if (erase)
        settings = nullptr;
    return settings.get();
}

osg::Object* ApplicationSettings::cloneType() const
{
    return new ApplicationSettings;
}

osg::Object* ApplicationSettings::clone(const osg::CopyOp& copyop) const
{
    return new ApplicationSettings(*this, copyop);
}

bool ApplicationSettings::isSameKindAs(const osg::Object* object) const
{
    return dynamic_cast<const ApplicationSettings*>(object) != nullptr;
}

const char* ApplicationSettings::libraryName() const
{
    return "vfApplication";
}

const char* ApplicationSettings::className() const
{
    return "Application";
}

void ApplicationSettings::setSplashHorizontalAlignmet(const std::string& alignment)
{
    m_splashHorizontalAlignment = alignment;
}

void ApplicationSettings::setSplashVerticalAlignmet(const std::string& alignment)
{
    m_splashVerticalAlignment = alignment;
}

void ApplicationSettings::setWorkingLocation(const std::string& directory)
{
    m_workingLocation = directory;
}

} // namespace vfApplication
