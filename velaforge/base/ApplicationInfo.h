// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <memory>

namespace vfBase {

struct ApplicationInfoPrivate;

/// Describes the running program. The program sets the values early in main; the libraries only read them.
///
///     vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
///     info.setApplicationName("vfviewer");
///     info.setApplicationVendorShortName("velaforge");
///
/// The name and the vendor's short name determine the path of the settings file. All values except the name
/// are empty unless set. No value is null; a pointer is valid until the value is set again. Setting null sets
/// the empty text.
class VFBASE_EXPORT ApplicationInfo
{
public:
    /// Returns the object of the process.
    static ApplicationInfo& instance();

    /// Returns the name of the application; that of the executable unless set.
    const char* getApplicationName() const;

    /// Returns the version of the application.
    const char* getApplicationVersion() const;

    /// Returns the name of the application's icon, see setApplicationIconName.
    const char* getApplicationIconName() const;

    /// Returns the address of the application's web site.
    const char* getApplicationUrl() const;

    /// Returns the address of the online help.
    const char* getApplicationOnlineHelpUrl() const;

    /// Returns the name of the vendor.
    const char* getApplicationVendorName() const;

    /// Returns the short name of the vendor.
    const char* getApplicationVendorShortName() const;

    /// Returns the address of the vendor's web site.
    const char* getApplicationVendorUrl() const;

    /// Returns the vendor's text for the title bar.
    const char* getApplicationVendorBanner() const;

    /// Returns the image of the splash screen, see setSplashImageName.
    const char* getSplashImageName() const;

    /// Sets the name of the application, which also names the settings file.
    void setApplicationName(const char* name);

    /// Sets the version of the application, as text.
    void setApplicationVersion(const char* version);

    /// Sets the name of the application's icon. The Qt side looks it up as "<name>.svg" or "<name>.png" in
    /// the resources below ":/icons", as the path of an image file if it has a slash, and otherwise as an
    /// icon of the desktop's theme.
    void setApplicationIconName(const char* name);

    /// Sets the address of the application's web site.
    void setApplicationUrl(const char* url);

    /// Sets the address of the online help.
    void setApplicationOnlineHelpUrl(const char* url);

    /// Sets the name of the vendor.
    void setApplicationVendorName(const char* name);

    /// Sets the short name of the vendor, which names the directory of the settings.
    void setApplicationVendorShortName(const char* name);

    /// Sets the address of the vendor's web site.
    void setApplicationVendorUrl(const char* url);

    /// Sets the vendor's text for the title bar.
    void setApplicationVendorBanner(const char* banner);

    /// Sets the image of the splash screen: the path of an image file, a Qt resource, or the name of an icon
    /// as for setApplicationIconName. Empty for no splash screen.
    void setSplashImageName(const char* name);

private:
    ApplicationInfo();
    ~ApplicationInfo();
    ApplicationInfo(const ApplicationInfo&) = delete;
    ApplicationInfo& operator=(const ApplicationInfo&) = delete;

    std::unique_ptr<ApplicationInfoPrivate> d;
};

} // namespace vfBase
