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

/// The shell of a program without a screen: its event loop carries out the options of the command line and
/// returns.
///
/// | option | meaning |
/// |---|---|
/// | `--snapshot <file>` | write a picture of the active document to this file |
/// | `--size <width>x<height>` | size of the picture in pixels, 1280x800 by default |
/// | `--transparent` | make the background of the picture transparent |
/// | `--turntable <n>` | write that many numbered pictures around the model |
/// | `--invoke <command>[=<argument>]` | run a command on the active document; may be given several times |
/// | `--script <file>` | run the commands of a file, one per line; `-` reads standard input |
/// | `--list-ui` | list menus, toolbars, dock windows and options pages on standard output |
/// | `--list-commands` | list the names of all commands on standard output |
///
/// The order is: lists, the script, the commands of `--invoke`, pictures. If a command is unknown, no command
/// runs. If a command fails or throws, later commands do not run and no picture is written; a command of
/// `--invoke` that only sets its property "failed" stops nothing. The shell restores the dock windows from
/// the settings before and stores their state afterwards. The view must be a SnapshotSource for a picture.
/// HeadlessApplicationProducer makes the shell.
class VFAPPLICATIONHEADLESS_EXPORT HeadlessApplication : public ApplicationInterface
{
public:
    /// The result of runEventLoop(), and thus of Application::run(), if a file could not be opened or saved,
    /// a command is unknown or failed, a script could not be read, a picture could not be written, or
    /// standard output could not be written. Each failure writes one line with the reason to standard error.
    static constexpr int requestFailed = 4;

    /// Makes a shell.
    HeadlessApplication();
    ~HeadlessApplication() override;

    HeadlessApplication(const HeadlessApplication&) = delete;
    HeadlessApplication& operator=(const HeadlessApplication&) = delete;

    /// Adds the shell's options to the usage text of @p parser.
    static void declareOptions(vfBase::ArgumentParser& parser);

    /// Consumes the shell's options from the command line of @p parser and checks them; a wrong value becomes
    /// an error of the parser. onBeforeRun() calls this. A program that calls it before Application::run()
    /// reports such errors before documents are opened.
    static void readOptions(vfBase::ArgumentParser& parser);

    /// Resets the options that were read, for the next application of the process.
    static void forgetOptions();

    /// Returns whether the command line has `--snapshot`, after readOptions().
    static bool wantsSnapshot();

    /// Flushes standard output and writes a line to standard error if that fails.
    /// @return false if not all output could be written
    static bool finishOutput();

    /// Resets status bar, title bar, toolbars and the exit request, for the next application of the process.
    void reset();

    int onBeforeRun() override;

    /// Carries out the options of the command line, as described above.
    /// @return the code of exit() if that was called, otherwise 0 or requestFailed
    int runEventLoop() override;
    int onAfterRun() override;
    void exit(int code) override;

    /// Does nothing.
    void shellExtensionA() override;

    /// Returns a HeadlessStatusBar.
    StatusBar& getStatusBar() override;

    /// Returns the title bar, with the title of the active document.
    HeadlessTitleBar& getTitleBar();

    /// Returns the toolbars that the modules had declared when the event loop began; none before that.
    const std::vector<HeadlessToolbar>& getToolbars() const;

    /// Does nothing.
    void shellExtensionB() override;

    /// Does nothing.
    void shellExtensionC() override;

    /// Does nothing: this shell watches no files.
    void addFileToFileSystemWatcher(vfBase::VfString path) override;

private:
    std::unique_ptr<HeadlessApplicationPrivate> d;
};

} // namespace vfApplication
