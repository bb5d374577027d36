// SPDX-License-Identifier: MIT
#pragma once

#include <velaforge/application/ApplicationInterface.h>
#include <velaforge/headless/Export.h>

#include <memory>
#include <vector>

namespace vfBase {
class ArgumentParser;
}

namespace vfApplication {

struct HeadlessApplicationPrivate;
class HeadlessTitleBar;
class HeadlessToolbar;

/// The shell of a program without a screen: its event loop does what the command line asks for and returns.
///
/// | option | meaning |
/// |---|---|
/// | `--snapshot <file>` | a picture of the active document goes into this file |
/// | `--size <width>x<height>` | size of the picture in pixels, 1280x800 unless given |
/// | `--invoke <command>[=<argument>]` | a command runs on the active document; as often as given, in order |
/// | `--list-ui` | menus, toolbars, dock windows and options pages are listed on standard output |
/// | `--list-commands` | the names of all commands are listed on standard output |
///
/// They are served in the order: lists, commands, picture. A command that is unknown keeps all of them from running. The
/// dock windows are put as they stood at the end of the last run first, and how they stand is kept at the end. The view to be shown is a SnapshotSource. HeadlessApplicationProducer makes the shell.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessApplication : public ApplicationInterface
{
public:
    /// What runEventLoop() returns when the picture could not be made or written, or a command is unknown or failed; the
    /// reason stands on standard error.
    static constexpr int requestFailed = 4;

    HeadlessApplication();
    ~HeadlessApplication() override;

    HeadlessApplication(const HeadlessApplication&) = delete;
    HeadlessApplication& operator=(const HeadlessApplication&) = delete;

    /// Enters the shell's options into the usage text.
    static void declareOptions(vfBase::ArgumentParser& parser);

    /// Takes the shell's options off the command line and checks them; a fault becomes an error of the parser.
    /// A program that calls this before Application::run learns of faults before documents are opened; the shell
    /// itself calls it in onBeforeRun().
    static void readOptions(vfBase::ArgumentParser& parser);

    /// @return whether the command line asked for a picture, once its options have been read
    static bool wantsSnapshot();

    int onBeforeRun() override;

    /// @return what exit() was called with if that was before, otherwise 0 or requestFailed
    int runEventLoop() override;
    int onAfterRun() override;
    void exit(int code) override;
    void shellExtensionA() override;

    /// @return a HeadlessStatusBar
    StatusBar& getStatusBar() override;

    /// @return the title bar, whose title is made anew
    HeadlessTitleBar& getTitleBar();

    /// @return the toolbars that the modules declared when the event loop began; none before
    const std::vector<HeadlessToolbar>& getToolbars() const;
    void shellExtensionB() override;
    void shellExtensionC() override;

    /// Nothing is watched: the program ends before a file could change.
    void addFileToFileSystemWatcher(vfBase::VfString path) override;

private:
    std::unique_ptr<HeadlessApplicationPrivate> d;
};

} // namespace vfApplication
