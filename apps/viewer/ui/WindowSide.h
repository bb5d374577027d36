// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vfApplication {
class DocManager;
}

namespace vfBase {
class ArgumentParser;
}

namespace vfViewer {

/// What the viewer with a window adds to it. It lies in a library of its own, so that a machine without a display needs
/// nothing of what windows need.
struct WindowSide
{
    /// @return why no window can be opened; empty when one can
    std::string (*displayError)(int argc, char** argv);

    /// Makes the shell with a window the one of the process, before the application is constructed.
    void (*install)();

    /// Takes the commands off the command line that the window runs.
    void (*readOptions)(vfBase::ArgumentParser& parser);

    /// @return a new manager that knows the viewer's kinds of document
    vfApplication::DocManager* (*makeDocManager)();

    void (*announceOptionsPages)();
};

/// Under the name "vfViewerWindowSide", what that library exports. @return what lives as long as the library
using GetWindowSide = const WindowSide*();

/// @return what the library gives, which stays open until the process ends; null with the reason where there is none
const WindowSide* openWindowSide(std::string& reason);

} // namespace vfViewer
