// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/dockwindows/DockWindowPrivate.h>
#include <velaforge/dockwindows/DockWindowProducer.h>
#include <velaforge/headless/Export.h>
#include <velaforge/headless/HeadlessDockWindow.h>

#include <osg/observer_ptr>

#include <memory>
#include <vector>

namespace vfApplication {

/// Makes the parts of dock windows for programs without a screen. Owns each part as long as its window
/// exists.
struct VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowProducer : DockWindowProducer
{
    /// Sets the producers of dock windows and of the dock window manager's part for the process.
    /// HeadlessApplicationProducer::install() calls this.
    static void install();

    /// Makes the part of @p dockWindow.
    /// @return the part, owned by this producer
    DockWindowInterface* create(DockWindow* dockWindow) override;

    /// Returns the dock windows that exist, in the order in which they were made.
    static std::vector<DockWindow*> windows();

    /// Restores the state of each window from DockWindowManagerSettings.
    static void restoreStates();

    /// Stores the state of each window in DockWindowManagerSettings. First removes windows that were
    /// destroyed without being removed from the dock window manager.
    static void saveStates();

protected:
    ~HeadlessDockWindowProducer() override;

private:
    struct Made
    {
        osg::observer_ptr<DockWindowPrivate> body;
        std::unique_ptr<HeadlessDockWindow> half;
    };
    static std::vector<Made>& made();
};

} // namespace vfApplication
