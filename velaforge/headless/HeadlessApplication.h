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
/// | `--snapshot <file>` | write a picture of the active document to this file |
/// | `--size <width>x<height>` | size of the picture in pixels, 1280x800 by default |
/// | `--transparent` | leave the background out of the picture |
/// | `--turntable <n>` | write that many pictures around the model, numbered |
/// | `--invoke <command>[=<argument>]` | run a command on the active document; may be given several times |
/// | `--script <file>` | run the commands of a file, one a line; `-` for standard input |
/// | `--list-ui` | list menus, toolbars, dock windows and options pages on standard output |
/// | `--list-commands` | list the names of all commands on standard output |
///
/// The order is: lists, the script, the commands of `--invoke`, pictures. An unknown command keeps all commands from
/// running. A command that fails ends a script, and keeps the picture from being taken; a command that throws fails, with
/// one line on standard error. Dock windows are restored from the settings before, and kept there afterwards. The view of
/// the picture must be a SnapshotSource. HeadlessApplicationProducer makes the shell.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessApplication : public ApplicationInterface
{
public:
    /// What runEventLoop() returns, and with it Application::run(), when a file named on the command line or by a command
    /// could not be opened or saved (HeadlessDocManager), a command is unknown or failed, a script could not be read, a
    /// picture could not be written, or standard output is full. The reason stands on standard error, one line each.
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

    /// Forgets the options that were read, for the next application.
    static void forgetOptions();

    /// @return whether the command line asked for a picture, once its options have been read
    static bool wantsSnapshot();

    /// Flushes standard output, and tells on standard error when not all of it could be written.
    /// @return false then
    static bool finishOutput();

    /// Ends what belongs to the current application: status bar, title, toolbars, the request to exit.
    void reset();

    int onBeforeRun() override;

    /// Does what the command line asks for.
    /// @return the code of exit() when that was called, otherwise 0 or requestFailed
    int runEventLoop() override;
    int onAfterRun() override;
    void exit(int code) override;
    void shellExtensionA() override;

    /// @return a HeadlessStatusBar
    StatusBar& getStatusBar() override;

    /// @return the title bar, with the title of the active document
    HeadlessTitleBar& getTitleBar();

    /// @return the toolbars that the modules had declared when the event loop began; none before
    const std::vector<HeadlessToolbar>& getToolbars() const;
    void shellExtensionB() override;
    void shellExtensionC() override;

    /// Does nothing: the program ends before a file could change.
    void addFileToFileSystemWatcher(vfBase::VfString path) override;

private:
    std::unique_ptr<HeadlessApplicationPrivate> d;
};

} // namespace vfApplication
