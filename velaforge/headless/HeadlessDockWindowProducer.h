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

/// Makes the halves of dock windows that nobody sees, and keeps each while its window is there.
struct VFAPPLICATIONHEADLESS_EXPORT HeadlessDockWindowProducer : DockWindowProducer
{
    /// Makes this kind of dock window, and of their manager, the one of the process. HeadlessApplicationProducer does it.
    static void install();

    DockWindowInterface* create(DockWindow* dockWindow) override;

    /// @return the windows that are there, in the order in which they were made
    static std::vector<DockWindow*> windows();

    /// Puts each window as it stood at the end of the last run, as far as that is known.
    static void restoreStates();

    /// Keeps how the windows stand in the settings. Windows that were destroyed while they were in the manager's table
    /// are taken out of it first.
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
