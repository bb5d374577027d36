// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/SettingsBase.h>

#include <osg/Vec3f>

#include <string>

namespace vfBase {
class SettingsProperties;
}

namespace vfApplication {

/// Settings of the application as a whole, kept between runs.
///
///     vfApplication::ApplicationSettings::instance(false)->setWorkingLocation("/models");
///
/// Loaded at the start of Application::run and saved at its end. Nothing is checked here; reading and writing
/// belong to the thread of run().
class VFAPPLICATION_EXPORT ApplicationSettings : public vfBase::SettingsBase<ApplicationSettings>
{
public:
    ApplicationSettings(const ApplicationSettings& other, const osg::CopyOp& copyop);

    /// @param erase  releases the object for good
    /// @return the one object; null once it was released, by erasing or at exit
    static ApplicationSettings* instance(bool erase);

    /// Where the text stands on the splash screen; "LEFT" unless set. The toolkit side knows what else there is.
    const std::string& getSplashHorizontalAlignmet() const { return m_splashHorizontalAlignment; }
    void setSplashHorizontalAlignmet(const std::string& alignment);

    /// "BOTTOM" unless set.
    const std::string& getSplashVerticalAlignmet() const { return m_splashVerticalAlignment; }
    void setSplashVerticalAlignmet(const std::string& alignment);

    /// Red, green and blue from 0 to 1; white unless set.
    const osg::Vec3f& getSplashTextColor() const { return m_splashTextColor; }
    void setSplashTextColor(const osg::Vec3f& color) { m_splashTextColor = color; }

    /// The directory the user works in; empty unless set. Application::setWorkingLocation checks it.
    const std::string& getWorkingLocation() const { return m_workingLocation; }
    void setWorkingLocation(const std::string& directory);

protected:
    ~ApplicationSettings() override;

private:
    friend vfBase::SettingsBase<ApplicationSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "Application";

    static const vfBase::SettingsProperties s_properties; ///< what the store keeps

    ApplicationSettings();

    std::string m_splashHorizontalAlignment = "LEFT";
    std::string m_splashVerticalAlignment = "BOTTOM";
    osg::Vec3f m_splashTextColor{1.0f, 1.0f, 1.0f};
    std::string m_workingLocation;
};

} // namespace vfApplication
