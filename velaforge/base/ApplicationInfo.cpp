// SPDX-License-Identifier: MIT
#include <velaforge/base/ApplicationInfo.h>

#include <climits>
#include <string>

#include <unistd.h>

namespace vfBase {

struct ApplicationInfoPrivate
{
    std::string applicationName;
    std::string applicationVersion;
    std::string applicationIconName;
    std::string applicationUrl;
    std::string applicationOnlineHelpUrl;
    std::string applicationVendorName;
    std::string applicationVendorShortName;
    std::string applicationVendorUrl;
    std::string applicationVendorBanner;
    std::string splashImageName;
};

namespace {

/// Returns the file name of the running executable; "application" if the system does not report it.
std::string executableName()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof(path));
    if (length <= 0)
        return "application";
    const std::string whole(path, static_cast<std::size_t>(length));
    return whole.substr(whole.rfind('/') + 1);
}

void assign(std::string& field, const char* text)
{
    field = text ? text : "";
}

} // namespace

ApplicationInfo& ApplicationInfo::instance()
{
    // Never destroyed: settings may be saved by exit handlers.
    static ApplicationInfo& info = *new ApplicationInfo;
    return info;
}

ApplicationInfo::ApplicationInfo() : d(std::make_unique<ApplicationInfoPrivate>())
{
    d->applicationName = executableName();
}

ApplicationInfo::~ApplicationInfo() = default;

const char* ApplicationInfo::getApplicationName() const
{
    return d->applicationName.c_str();
}

const char* ApplicationInfo::getApplicationVersion() const
{
    return d->applicationVersion.c_str();
}

const char* ApplicationInfo::getApplicationIconName() const
{
    return d->applicationIconName.c_str();
}

const char* ApplicationInfo::getApplicationUrl() const
{
    return d->applicationUrl.c_str();
}

const char* ApplicationInfo::getApplicationOnlineHelpUrl() const
{
    return d->applicationOnlineHelpUrl.c_str();
}

const char* ApplicationInfo::getApplicationVendorName() const
{
    return d->applicationVendorName.c_str();
}

const char* ApplicationInfo::getApplicationVendorShortName() const
{
    return d->applicationVendorShortName.c_str();
}

const char* ApplicationInfo::getApplicationVendorUrl() const
{
    return d->applicationVendorUrl.c_str();
}

const char* ApplicationInfo::getApplicationVendorBanner() const
{
    return d->applicationVendorBanner.c_str();
}

const char* ApplicationInfo::getSplashImageName() const
{
    return d->splashImageName.c_str();
}

void ApplicationInfo::setApplicationName(const char* name)
{
    assign(d->applicationName, name);
}

void ApplicationInfo::setApplicationVersion(const char* version)
{
    assign(d->applicationVersion, version);
}

void ApplicationInfo::setApplicationIconName(const char* name)
{
    assign(d->applicationIconName, name);
}

void ApplicationInfo::setApplicationUrl(const char* url)
{
    assign(d->applicationUrl, url);
}

void ApplicationInfo::setApplicationOnlineHelpUrl(const char* url)
{
    assign(d->applicationOnlineHelpUrl, url);
}

void ApplicationInfo::setApplicationVendorName(const char* name)
{
    assign(d->applicationVendorName, name);
}

void ApplicationInfo::setApplicationVendorShortName(const char* name)
{
    assign(d->applicationVendorShortName, name);
}

void ApplicationInfo::setApplicationVendorUrl(const char* url)
{
    assign(d->applicationVendorUrl, url);
}

void ApplicationInfo::setApplicationVendorBanner(const char* banner)
{
    assign(d->applicationVendorBanner, banner);
}

void ApplicationInfo::setSplashImageName(const char* name)
{
    assign(d->splashImageName, name);
}

} // namespace vfBase
