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
    /// Makes a body with the id @p windowId; null generates one.
    explicit DockWindowPrivate(const char* windowId);
    DockWindowPrivate(const DockWindowPrivate&) = delete;
    DockWindowPrivate& operator=(const DockWindowPrivate&) = delete;

    std::string id;                                     ///< does not change
    std::string title;                                  ///< the title set last
    std::int32_t shortcut = 0;                          ///< see DockWindow::setShortcut
    DockWindowInterface* dockWindowInterface = nullptr; ///< owned by the toolkit side
    DockWindow* dockWindow = nullptr; ///< the window of this body, null after its destruction

protected:
    /// Deletes the window, unless it was destroyed before.
    ~DockWindowPrivate() override;
};

} // namespace vfApplication
