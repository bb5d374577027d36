// SPDX-License-Identifier: MIT
// The identity and the locations of Application, which vfBase stores.
#include <velaforge/application/Application.h>

#include <velaforge/application/ApplicationSettings.h>
#include <velaforge/base/ApplicationInfo.h>
#include <velaforge/base/FileNames.h>
#include <velaforge/base/Require.h>
#include <velaforge/base/Settings.h>
#include <velaforge/base/StandardPaths.h>
#include <velaforge/base/Version.h>

namespace vfApplication {

using vfBase::ApplicationInfo;
using vfBase::StandardPaths;

namespace {

/// Returns the settings of the application. The program must not have released them.
ApplicationSettings& settings()
{
    ApplicationSettings* present = ApplicationSettings::instance(false);
    VF_REQUIRE(present, "Application", "the settings were released by ApplicationSettings::instance(true)");
    return *present;
}

} // namespace

const char* getLibraryName()
{
    return "velaFORGE Application Library";
}

const char* getVersion()
{
    return vfBase::getVersion();
}

const char* Application::getApplicationName() const
{
    return ApplicationInfo::instance().getApplicationName();
}

const char* Application::getApplicationVersion() const
{
    return ApplicationInfo::instance().getApplicationVersion();
}

const char* Application::getApplicationIconName() const
{
    return ApplicationInfo::instance().getApplicationIconName();
}

const char* Application::getApplicationUrl() const
{
    return ApplicationInfo::instance().getApplicationUrl();
}

const char* Application::getApplicationOnlineHelpUrl() const
{
    return ApplicationInfo::instance().getApplicationOnlineHelpUrl();
}

const char* Application::getApplicationVendorName() const
{
    return ApplicationInfo::instance().getApplicationVendorName();
}

const char* Application::getApplicationVendorShortName() const
{
    return ApplicationInfo::instance().getApplicationVendorShortName();
}

const char* Application::getApplicationVendorUrl() const
{
    return ApplicationInfo::instance().getApplicationVendorUrl();
}

const char* Application::getApplicationVendorBanner() const
{
    return ApplicationInfo::instance().getApplicationVendorBanner();
}

const char* Application::getSplashImageName() const
{
    return ApplicationInfo::instance().getSplashImageName();
}

const char* Application::getDocumentsLocation() const
{
    return StandardPaths::standardLocation(StandardPaths::Documents);
}

const char* Application::getTempLocation() const
{
    return StandardPaths::standardLocation(StandardPaths::Temp);
}

const char* Application::getHomeLocation() const
{
    return StandardPaths::standardLocation(StandardPaths::Home);
}

const char* Application::getDataLocation() const
{
    return StandardPaths::standardLocation(StandardPaths::ApplicationData);
}

const char* Application::getUserSettingsFilePath() const
{
    return vfBase::Settings::global().getSettingsFilePath();
}

const char* Application::getSplashHorizontalAlignmet() const
{
    return settings().getSplashHorizontalAlignmet().c_str();
}

const char* Application::getSplashVerticalAlignmet() const
{
    return settings().getSplashVerticalAlignmet().c_str();
}

void Application::getSplashTextColor(float& r, float& g, float& b) const
{
    const osg::Vec3f& color = settings().getSplashTextColor();
    r = color.x();
    g = color.y();
    b = color.z();
}

const char* Application::getWorkingLocation() const
{
    const std::string& kept = settings().getWorkingLocation();
    return vfBase::directoryExists(kept) ? kept.c_str()
                                         : StandardPaths::standardLocation(StandardPaths::Documents);
}

void Application::setWorkingLocation(const char* path)
{
    if (vfBase::directoryExists(path))
        settings().setWorkingLocation(path);
}

} // namespace vfApplication
