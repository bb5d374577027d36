// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <memory>

namespace vfBase {

struct ApplicationInfoPrivate;

/// The identity of the running program. The program sets it early in main; the libraries only read it.
///
///     vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
///     info.setApplicationName("vfviewer");
///     info.setApplicationVendorShortName("velaforge");
///
/// Name and vendor's short name decide where the settings are kept. Until it is set, the name is that of the
/// executable and every other value is empty. A getter never returns null; its text stays valid until that
/// value is set again. A setter copies its text; null counts as the empty text.
class VFBASE_EXPORT ApplicationInfo
{
public:
    /// @return the one object of the process
    static ApplicationInfo& instance();

    /// @return the program's name, as "vfviewer": part of the path of the settings file and of the data
    ///         directories
    const char* getApplicationName() const;

    /// @return the program's version, as "1.2.3"
    const char* getApplicationVersion() const;

    /// @return the program's icon: the path of an image, or the name of an icon of the program or of the theme
    const char* getApplicationIconName() const;

    /// @return the address of the program's web page
    const char* getApplicationUrl() const;

    /// @return the address of the program's manual on the web
    const char* getApplicationOnlineHelpUrl() const;

    /// @return the vendor's full name, for people to read
    const char* getApplicationVendorName() const;

    /// @return the vendor's name in paths: the directory of the settings file and of the data directories
    const char* getApplicationVendorShortName() const;

    /// @return the address of the vendor's web page
    const char* getApplicationVendorUrl() const;

    /// @return the vendor's text for the title bar
    const char* getApplicationVendorBanner() const;

    /// @return the path of the image that the splash screen shows
    const char* getSplashImageName() const;

    /// Sets the program's name. Call it before the settings are loaded: another name means another settings
    /// file.
    void setApplicationName(const char* name);

    /// Sets the program's version.
    void setApplicationVersion(const char* version);

    /// Sets the program's icon: the path of an image, or the name of an icon of the program or of the theme.
    void setApplicationIconName(const char* name);

    /// Sets the address of the program's web page.
    void setApplicationUrl(const char* url);

    /// Sets the address of the program's manual on the web.
    void setApplicationOnlineHelpUrl(const char* url);

    /// Sets the vendor's full name.
    void setApplicationVendorName(const char* name);

    /// Sets the vendor's name in paths. Call it before the settings are loaded, as for the program's name.
    void setApplicationVendorShortName(const char* name);

    /// Sets the address of the vendor's web page.
    void setApplicationVendorUrl(const char* url);

    /// Sets the vendor's text for the title bar.
    void setApplicationVendorBanner(const char* banner);

    /// Sets the path of the image that the splash screen shows.
    void setSplashImageName(const char* name);

private:
    ApplicationInfo();
    ~ApplicationInfo();
    ApplicationInfo(const ApplicationInfo&) = delete;
    ApplicationInfo& operator=(const ApplicationInfo&) = delete;

    std::unique_ptr<ApplicationInfoPrivate> d;
};

} // namespace vfBase
