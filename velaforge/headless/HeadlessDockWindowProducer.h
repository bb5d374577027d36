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

/// Makes the toolkit halves of dock windows without a screen, and owns each as long as its window exists.
struct VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowProducer : DockWindowProducer
{
    /// Makes this kind of dock window and of dock window manager the ones of the process. HeadlessApplicationProducer does
    /// it.
    static void install();

    /// @return the half of a window, owned by this producer
    DockWindowInterface* create(DockWindow* dockWindow) override;

    /// @return the windows that exist, in the order in which they were made
    static std::vector<DockWindow*> windows();

    /// Restores the state of each window from the settings, as the last run left it.
    static void restoreStates();

    /// Writes the state of the windows to the settings. Windows that were destroyed while they were in the manager's table
    /// are removed from it first.
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
