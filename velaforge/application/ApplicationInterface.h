// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

class StatusBar;

/// The shell of an application, realised by a toolkit side: window, event loop, status bar, file watcher.
///
/// Made by ApplicationProducer::create, once in the process. The library calls each operation on the thread of
/// Application::run and owns nothing here.
class VFAPPLICATION_EXPORT ApplicationInterface
{
public:
    ApplicationInterface() = default;
    ApplicationInterface(const ApplicationInterface&) = default;
    ApplicationInterface& operator=(const ApplicationInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~ApplicationInterface();

    /// Prepares the shell. @return 0 to go on; anything else ends Application::run with that value
    virtual int onBeforeRun() = 0;

    /// The last step, after the settings were saved. @return the exit code, if the event loop returned 0
    virtual int onAfterRun() = 0;

    /// Runs until the program is to end; the documents of the command line are open by now. @return the exit code
    virtual int runEventLoop() = 0;

    /// Makes runEventLoop return with @p code; may come at any time, also before the loop runs.
    virtual void exit(int code) = 0;

    /// For shells to use as they like; never called by this library.
    virtual void shellExtensionA() = 0;

    /// @return the status bar, owned by the shell; asked anew each time
    virtual StatusBar& getStatusBar() = 0;

    virtual void shellExtensionB() = 0;
    virtual void shellExtensionC() = 0;

    /// Starts watching a file that was just loaded.
    virtual void addFileToFileSystemWatcher(vfBase::VfString path) = 0;

    /// Stops watching a file. Does nothing here, so that a shell without a watcher need not override it.
    virtual void removeFileFromFileSystemWatcher(vfBase::VfString path);
};

} // namespace vfApplication
