// SPDX-License-Identifier: MIT
#include <velaforge/application/ApplicationSettings.h>

#include <velaforge/base/SettingsProperties.h>

namespace vfApplication {

namespace {

using vfBase::SettingsProperties;
using vfBase::SettingsValue;

bool readColor(const SettingsValue& value, osg::Vec3f& color)
{
    const SettingsValue::List* components = value.list();
    osg::Vec3f read;
    if (!components || components->size() != 3 || !(*components)[0].read(read.x()) ||
        !(*components)[1].read(read.y()) || !(*components)[2].read(read.z()))
        return false;
    color = read;
    return true;
}

} // namespace

const SettingsProperties ApplicationSettings::s_properties(
    "vfApplication::Application",
    {SettingsProperties::property("splashHorizontalAlignment",
                                  &ApplicationSettings::getSplashHorizontalAlignmet,
                                  &ApplicationSettings::setSplashHorizontalAlignmet),
     SettingsProperties::property("splashVerticalAlignment", &ApplicationSettings::getSplashVerticalAlignmet,
                                  &ApplicationSettings::setSplashVerticalAlignmet),
     SettingsProperties::property<ApplicationSettings>(
         "splashTextColor",
         [](const ApplicationSettings& settings) -> SettingsValue {
             const osg::Vec3f& color = settings.m_splashTextColor;
             return SettingsValue::List{static_cast<double>(color.x()), static_cast<double>(color.y()),
                                        static_cast<double>(color.z())};
         },
         [](ApplicationSettings& settings, const SettingsValue& value) {
             return readColor(value, settings.m_splashTextColor);
         }),
     SettingsProperties::property("workingLocation", &ApplicationSettings::getWorkingLocation,
                                  &ApplicationSettings::setWorkingLocation)});

ApplicationSettings::ApplicationSettings() = default;

ApplicationSettings::ApplicationSettings(const ApplicationSettings& other, const osg::CopyOp& copyop)
    : SettingsBase(other, copyop),
      m_splashHorizontalAlignment(other.m_splashHorizontalAlignment),
      m_splashVerticalAlignment(other.m_splashVerticalAlignment),
      m_splashTextColor(other.m_splashTextColor),
      m_workingLocation(other.m_workingLocation)
{}

ApplicationSettings::~ApplicationSettings() = default;

ApplicationSettings* ApplicationSettings::instance(bool erase)
{
    return singleton(erase);
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
