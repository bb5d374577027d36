// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/Export.h>

#include <memory>

namespace vfBase {

struct ApplicationInfoPrivate;

/// Who the running program is. The program fills it in early in main; the libraries only read it.
///
///     vfBase::ApplicationInfo& info = vfBase::ApplicationInfo::instance();
///     info.setApplicationName("vfviewer");
///     info.setApplicationVendorShortName("velaforge");
///
/// Name and vendor's short name decide where the settings are kept. Until it is set, the name is that of the
/// executable and every other value is empty. No value is ever null; the pointers are valid until the value is set
/// anew. Null counts as the empty text.
class VFBASE_EXPORT ApplicationInfo
{
public:
    static ApplicationInfo& instance();

    const char* getApplicationName() const;
    const char* getApplicationVersion() const;
    const char* getApplicationIconName() const;
    const char* getApplicationUrl() const;
    const char* getApplicationOnlineHelpUrl() const;
    const char* getApplicationVendorName() const;
    const char* getApplicationVendorShortName() const;
    const char* getApplicationVendorUrl() const;
    const char* getApplicationVendorBanner() const;
    const char* getSplashImageName() const;

    void setApplicationName(const char* name);
    void setApplicationVersion(const char* version);
    void setApplicationIconName(const char* name);
    void setApplicationUrl(const char* url);
    void setApplicationOnlineHelpUrl(const char* url);
    void setApplicationVendorName(const char* name);
    void setApplicationVendorShortName(const char* name);
    void setApplicationVendorUrl(const char* url);
    void setApplicationVendorBanner(const char* banner);
    void setSplashImageName(const char* name);

private:
    ApplicationInfo();
    ~ApplicationInfo();
    ApplicationInfo(const ApplicationInfo&) = delete;
    ApplicationInfo& operator=(const ApplicationInfo&) = delete;

    std::unique_ptr<ApplicationInfoPrivate> d;
};

} // namespace vfBase
