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
    /// Makes the body of @p manager, without windows.
    explicit DockWindowManagerPrivate(DockWindowManager* manager) : dockWindowManager(manager) {}
    DockWindowManagerPrivate(const DockWindowManagerPrivate&) = delete;
    DockWindowManagerPrivate& operator=(const DockWindowManagerPrivate&) = delete;

    // Destroyed in reverse order: the interface before the windows.

    /// The bodies of the windows, by id.
    vfBase::Map<vfBase::VfString, osg::ref_ptr<DockWindowPrivate>> dockWindows;

    /// The toolkit side's part, empty without a producer.
    std::shared_ptr<DockWindowManagerInterface> dockWindowManagerInterface;

    /// The manager of this body, null after its destruction.
    DockWindowManager* dockWindowManager;

protected:
    /// Deletes the manager, unless it was destroyed before, and releases the windows.
    ~DockWindowManagerPrivate() override;
};

} // namespace vfApplication
