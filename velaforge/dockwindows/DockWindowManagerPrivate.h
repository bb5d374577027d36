// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/Map.h>
#include <velaforge/base/VfString.h>
#include <velaforge/dockwindows/DockWindowManagerInterface.h>
#include <velaforge/dockwindows/DockWindowPrivate.h>

#include <osg/Referenced>
#include <osg/ref_ptr>

#include <memory>

namespace vfApplication {

class DockWindowManager;

/// Body of DockWindowManager.
class VFAPPLICATION_EXPORT DockWindowManagerPrivate : public osg::Referenced
{
public:
    explicit DockWindowManagerPrivate(DockWindowManager* manager) : dockWindowManager(manager) {}
    DockWindowManagerPrivate(const DockWindowManagerPrivate&) = delete;
    DockWindowManagerPrivate& operator=(const DockWindowManagerPrivate&) = delete;

    // The order decides what goes first: the interface, then the windows.
    vfBase::Map<vfBase::VfString, osg::ref_ptr<DockWindowPrivate>> dockWindows; ///< the bodies, by id
    std::shared_ptr<DockWindowManagerInterface> dockWindowManagerInterface;     ///< empty without a producer
    DockWindowManager* dockWindowManager; ///< the manager of this body, null once it is gone

protected:
    /// Destroys the manager, unless that has cut itself off before.
    ~DockWindowManagerPrivate() override;
};

} // namespace vfApplication
