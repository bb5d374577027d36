// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/Export.h>
#include <velaforge/base/VfString.h>

namespace vfApplication {

class StatusBar;

/// The base class of the shell, the toolkit side of an application: window, event loop, status bar, file
/// watcher.
///
/// A toolkit side derives from it. ApplicationProducer::create makes one shell in a process, and the toolkit
/// side owns it. This library calls each operation on the thread of Application::run.
class VFAPPLICATION_EXPORT ApplicationInterface
{
public:
    /// Makes an object without fields.
    ApplicationInterface() = default;

    /// Copies nothing: the class has no fields.
    ApplicationInterface(const ApplicationInterface&) = default;

    /// Copies nothing: the class has no fields.
    ApplicationInterface& operator=(const ApplicationInterface&) = default;

    // In the order of their slots, which is part of the binary interface.
    virtual ~ApplicationInterface();

    /// Prepares the shell, before documents are opened.
    /// @return 0 to go on; Application::run returns any other value at once
    virtual int onBeforeRun() = 0;

    /// Called as the last step of Application::run, after the settings were saved.
    /// @return the exit code, used if the event loop returned 0
    virtual int onAfterRun() = 0;

    /// Runs the event loop until the program ends. The documents of the command line are open.
    /// @return the exit code; 0 for the one that onAfterRun returns
    virtual int runEventLoop() = 0;

    /// Makes runEventLoop return @p code. May be called at any time, also before the event loop runs.
    virtual void exit(int code) = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void shellExtensionA() = 0;

    /// Returns the status bar, which the shell owns. This library calls it again each time and stores no
    /// pointer.
    virtual StatusBar& getStatusBar() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void shellExtensionB() = 0;

    /// An operation that the toolkit side defines. This library does not call it.
    virtual void shellExtensionC() = 0;

    /// Starts watching the file @p path, which was just loaded.
    virtual void addFileToFileSystemWatcher(vfBase::VfString path) = 0;

    /// Stops watching the file @p path. Does nothing here, for shells without a file watcher.
    virtual void removeFileFromFileSystemWatcher(vfBase::VfString path);
};

} // namespace vfApplication
