// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

#include <osg/Referenced>

#include <cstdint>
#include <string>

namespace vfApplication {

class DockWindow;
class DockWindowInterface;

/// Body of DockWindow.
class VFAPPLICATION_EXPORT DockWindowPrivate : public osg::Referenced
{
public:
    explicit DockWindowPrivate(const char* windowId);
    DockWindowPrivate(const DockWindowPrivate&) = delete;
    DockWindowPrivate& operator=(const DockWindowPrivate&) = delete;

    std::string id; ///< fixed after construction
    std::string title;
    std::int32_t shortcut = 0;
    DockWindowInterface* dockWindowInterface = nullptr; ///< the toolkit side's
    DockWindow* dockWindow = nullptr;                   ///< the window of this body, null once it is gone

protected:
    /// Destroys the window, unless that has cut itself off before.
    ~DockWindowPrivate() override;
};

} // namespace vfApplication
