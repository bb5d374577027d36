// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindowManager;
class DockWindowManagerInterface;

/// Makes the toolkit side's part of the dock window manager. A toolkit side derives from it, makes one and
/// stores it in Realizer before the application is constructed. This library neither assigns nor deletes a
/// producer.
struct VFAPPLICATION_EXPORT DockWindowManagerProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static DockWindowManagerProducer* Realizer;

    /// Makes a producer that is not in use.
    DockWindowManagerProducer() = default;

    /// Copies nothing: the class has no fields.
    DockWindowManagerProducer(const DockWindowManagerProducer&) = default;

    /// Copies nothing: the class has no fields.
    DockWindowManagerProducer& operator=(const DockWindowManagerProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Makes the toolkit side's part of @p manager, whose constructor calls this.
    /// @return the new part, which the manager owns
    virtual DockWindowManagerInterface* create(DockWindowManager* manager) = 0;

protected:
    virtual ~DockWindowManagerProducer();
};

} // namespace vfApplication
