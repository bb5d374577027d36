// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindow;
class DockWindowInterface;

/// Makes the toolkit side's halves of dock windows. A toolkit side derives from it, makes one and stores it in Realizer
/// before any window is made; this library never assigns or deletes it.
struct VFAPPLICATION_EXPORT DockWindowProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static DockWindowProducer* Realizer;

    DockWindowProducer() = default;
    DockWindowProducer(const DockWindowProducer&) = default;
    DockWindowProducer& operator=(const DockWindowProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Called within the constructor of DockWindow, before those of derived classes.
    /// @return the half of that window, which stays the toolkit side's
    virtual DockWindowInterface* create(DockWindow* dockWindow) = 0;

protected:
    virtual ~DockWindowProducer();
};

} // namespace vfApplication
