// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindowManager;
class DockWindowManagerInterface;

/// Makes the toolkit side's half of the manager. A toolkit side derives from it, makes one and stores it in Realizer
/// before the application is constructed; this library never assigns or deletes it.
struct VFAPPLICATION_EXPORT DockWindowManagerProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static DockWindowManagerProducer* Realizer;

    DockWindowManagerProducer() = default;
    DockWindowManagerProducer(const DockWindowManagerProducer&) = default;
    DockWindowManagerProducer& operator=(const DockWindowManagerProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Called within the constructor of @p manager.
    /// @return the half of that manager, which the manager owns from then on
    virtual DockWindowManagerInterface* create(DockWindowManager* manager) = 0;

protected:
    virtual ~DockWindowManagerProducer();
};

} // namespace vfApplication
