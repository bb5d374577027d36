// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/base/SettingsObjectPrivate.h>
#include <velaforge/qt/Export.h>

#include <map>
#include <string>

namespace vfApplication {

/// What the window keeps between runs.
class VFAPPLICATIONQT_EXPORT WindowSettings : public vfBase::SettingsObjectPrivate
{
public:
    META_Object(vfApplicationQt, WindowSettings)

        /// The keys of commands, as QKeySequence writes them; several behind one another with "; " between.
        using Shortcuts = std::map<std::string, std::string>;

    WindowSettings() = default;
    WindowSettings(const WindowSettings& other, const osg::CopyOp& copyop);

    /// @return the one object, known to the store
    static WindowSettings& instance();

    /// Where the window stands and what is docked where, as Qt puts it, in base 64; empty until a window was closed.
    std::string geometry;
    std::string layout;

    /// Such as "de"; empty for the language of the system.
    std::string language;

    /// Only of commands whose keys the user changed; an empty value is a command without keys.
    Shortcuts shortcuts;

protected:
    ~WindowSettings() override = default;
};

} // namespace vfApplication
