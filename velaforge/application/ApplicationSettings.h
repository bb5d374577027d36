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

/// Stores settings of the application as a whole between runs.
///
///     vfApplication::ApplicationSettings::instance(false)->setWorkingLocation("/models");
///
/// Application::run loads the settings at its start and saves them after the event loop. The setters do not
/// check their arguments. Reading and writing belong to the thread of run().
class VFAPPLICATION_EXPORT ApplicationSettings : public vfBase::SettingsBase<ApplicationSettings>
{
public:
    /// Copies the values.
    ApplicationSettings(const ApplicationSettings& other, const osg::CopyOp& copyop);

    /// Returns the only object of this class. If @p erase is true, releases it instead, for the rest of the
    /// process.
    /// @return null after it was released, by @p erase or when the process ends
    static ApplicationSettings* instance(bool erase);

    /// Returns where the splash screen shows its text; "LEFT" unless set. The Qt side knows "LEFT", "CENTER"
    /// and "RIGHT".
    const std::string& getSplashHorizontalAlignmet() const { return m_splashHorizontalAlignment; }

    /// Sets where the splash screen shows its text.
    void setSplashHorizontalAlignmet(const std::string& alignment);

    /// Returns where the splash screen shows its text; "BOTTOM" unless set. The Qt side knows "TOP", "CENTER"
    /// and "BOTTOM".
    const std::string& getSplashVerticalAlignmet() const { return m_splashVerticalAlignment; }

    /// Sets where the splash screen shows its text.
    void setSplashVerticalAlignmet(const std::string& alignment);

    /// Returns the colour of the text on the splash screen: red, green and blue from 0 to 1; white unless
    /// set.
    const osg::Vec3f& getSplashTextColor() const { return m_splashTextColor; }

    /// Sets the colour of the text on the splash screen.
    void setSplashTextColor(const osg::Vec3f& color) { m_splashTextColor = color; }

    /// Returns the working directory; empty unless set. Application::getWorkingLocation checks that it
    /// exists.
    const std::string& getWorkingLocation() const { return m_workingLocation; }

    /// Sets the working directory. Application::setWorkingLocation checks that it exists.
    void setWorkingLocation(const std::string& directory);

protected:
    ~ApplicationSettings() override;

private:
    friend class vfBase::SettingsBase<ApplicationSettings>;
    static constexpr const char* settingsLibrary = "vfApplication";
    static constexpr const char* settingsName = "Application";

    static const vfBase::SettingsProperties s_properties; ///< what the store saves

    ApplicationSettings();

    std::string m_splashHorizontalAlignment = "LEFT";
    std::string m_splashVerticalAlignment = "BOTTOM";
    osg::Vec3f m_splashTextColor{1.0f, 1.0f, 1.0f};
    std::string m_workingLocation;
};

} // namespace vfApplication
