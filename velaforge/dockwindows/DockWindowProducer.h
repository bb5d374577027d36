// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>

namespace vfApplication {

class DockWindow;
class DockWindowInterface;

/// Makes the toolkit side's parts of dock windows. A toolkit side derives from it, makes one and stores it in
/// Realizer before any dock window is made. This library neither assigns nor deletes a producer.
struct VFAPPLICATION_EXPORT DockWindowProducer
{
    /// The producer in use; null until a toolkit side sets it.
    static DockWindowProducer* Realizer;

    /// Makes a producer that is not in use.
    DockWindowProducer() = default;

    /// Copies nothing: the class has no fields.
    DockWindowProducer(const DockWindowProducer&) = default;

    /// Copies nothing: the class has no fields.
    DockWindowProducer& operator=(const DockWindowProducer&) = default;

    // In the order of their slots, which is part of the binary interface.

    /// Makes the toolkit side's part of @p dockWindow. The constructor of DockWindow calls this, before the
    /// constructors of derived classes run.
    /// @return the new part, which the toolkit side owns
    virtual DockWindowInterface* create(DockWindow* dockWindow) = 0;

protected:
    virtual ~DockWindowProducer();
};

} // namespace vfApplication
